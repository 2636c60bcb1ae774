#include "report/PrintRange.h"

#include <gtest/gtest.h>

namespace {

using Mreport::RecordRange;

constexpr RecordRange page{101, 300};

TEST(PrintRange, The_page_s_own_first_and_last_record_are_printable) {
    EXPECT_EQ(Mreport::RefuseRange({101, 300}, page), "");
    EXPECT_EQ(Mreport::RefuseRange({101, 101}, page), "");
    EXPECT_EQ(Mreport::RefuseRange({300, 300}, page), "");
}

TEST(PrintRange, A_last_record_below_the_first_is_invalid) {
    EXPECT_EQ(Mreport::RefuseRange({200, 199}, page), "Invalid range");
}

TEST(PrintRange, First_record_0_is_invalid_even_on_a_page_that_starts_at_1) {
    EXPECT_EQ(Mreport::RefuseRange({0, 10}, {1, 50}), "Invalid range");
}

TEST(PrintRange, A_record_before_or_behind_the_page_is_out_of_range) {
    EXPECT_EQ(Mreport::RefuseRange({100, 200}, page), "Out of range");
    EXPECT_EQ(Mreport::RefuseRange({101, 301}, page), "Out of range");
    EXPECT_EQ(Mreport::RefuseRange({-5, 200}, page), "Out of range");
}

TEST(PrintRange, A_graph_of_1500_records_prints_and_one_of_1501_is_refused) {
    EXPECT_EQ(Mreport::RefuseGraphRange({1, 1500}), "");
    EXPECT_EQ(Mreport::RefuseGraphRange({1, 1501}),
              "Too much record to print a graph (Max. 1500 points)");
}

TEST(PrintRange, A_graph_of_every_record_number_there_is_is_refused) {
    EXPECT_NE(Mreport::RefuseGraphRange({-2147483647, 2147483647}), "");
}

TEST(PrintRange, A_range_box_is_read_by_its_leading_number) {
    EXPECT_EQ(Mreport::TypedRecordNumber(" 12 records"), 12);
    EXPECT_EQ(Mreport::TypedRecordNumber(""), 0);
    EXPECT_EQ(Mreport::TypedRecordNumber("all"), 0);
    EXPECT_EQ(Mreport::TypedRecordNumber("99999999999"), 2147483647);
}

} // namespace
