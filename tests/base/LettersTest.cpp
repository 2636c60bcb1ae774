#include "base/Letters.h"

#include <gtest/gtest.h>

namespace {

TEST(Letters, Case_of_A_to_Z_makes_no_difference_and_of_other_letters_it_does) {
    EXPECT_TRUE(Letters::SameText("n/A", "N/a"));
    EXPECT_FALSE(Letters::SameText("N/A", "N/A "));
    EXPECT_FALSE(Letters::SameText("\xE9", "\xC9")); // e and E with an acute accent
    EXPECT_FALSE(Letters::SameText("[", "{"));       // as far apart as a letter and its capital
}

TEST(Letters, A_part_is_found_at_the_start_and_anywhere_whatever_its_case) {
    EXPECT_TRUE(Letters::BeginsWith("Record 12", "record 1"));
    EXPECT_FALSE(Letters::BeginsWith("Rec", "Record"));
    EXPECT_TRUE(Letters::Contains("My rEdOx probe", "Redox"));
    EXPECT_FALSE(Letters::Contains("Redo", "Redox"));
    EXPECT_TRUE(Letters::Contains("", ""));
}

TEST(Letters, Only_what_counts_as_blank_goes_from_the_ends) {
    const auto isStar = [](char c) { return c == '*'; };
    EXPECT_EQ(Letters::Trimmed("**a*b**", isStar), "a*b");
    EXPECT_EQ(Letters::WithoutLeading("**a**", isStar), "a**");
    EXPECT_EQ(Letters::Trimmed("***", isStar), "");
}

} // namespace
