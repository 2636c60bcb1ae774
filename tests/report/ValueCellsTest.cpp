#include "report/ValueCells.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

using Mreport::NumberInCell;
using Mreport::ReadCells;

TEST(ValueCells, Each_column_has_its_value_or_none) {
    const auto values = ReadCells("\t12.3        \tNA          \t-1.50E-03   \t            \tN/A");
    EXPECT_EQ(values[0], 12.3);
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[2], -1.5e-3);
    EXPECT_TRUE(std::isnan(values[3]));
    EXPECT_TRUE(std::isnan(values[4]));
    EXPECT_TRUE(std::isnan(values[5])) << "no such column";
}

TEST(ValueCells, Columns_behind_the_eighth_are_left_out) {
    EXPECT_EQ(ReadCells("\t1\t2\t3\t4\t5\t6\t7\t8\t9")[7], 8);
}

TEST(ValueCells, A_text_that_is_no_number_reads_as_its_leading_number) {
    EXPECT_EQ(ReadCells("\tError\t12.5 x")[0], 0);
    EXPECT_EQ(ReadCells("\tError\t12.5 x")[1], 12.5);
}

TEST(ValueCells, Cells_read_together_have_the_values_of_cells_read_alone) {
    constexpr std::string_view letters = "0123456789.+-eE NA/\x01";
    std::mt19937 chance(11);
    std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1);
    for (int round = 0; round < 20'000; ++round) {
        std::string cell;
        for (std::size_t length = letter(chance); length > 0; --length)
            cell += letters[letter(chance)];
        const auto alone = NumberInCell(cell);
        const double together = ReadCells("\t1\t" + cell + "\t2")[1];
        ASSERT_TRUE(alone ? together == *alone : std::isnan(together)) << "\"" << cell << "\"";
    }
}

TEST(ValueCells, Numbers_of_many_digits_are_read_to_the_last_bit) {
    std::mt19937_64 chance(12);
    for (int round = 0; round < 20'000; ++round) {
        const std::string digits = std::to_string(chance());
        const std::size_t length = 1 + chance() % digits.size();
        const std::string cell = digits.substr(0, length / 2 + 1) + "." +
                                 digits.substr(length / 2 + 1) + "E-" +
                                 std::to_string(chance() % 40);
        ASSERT_EQ(ReadCells("\t" + cell)[0], NumberInCell(cell)) << cell;
    }
}
