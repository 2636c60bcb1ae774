#include "settings/Fields.h"
#include "settings/SettingsLines.h"
#include "settings/SortPairs.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using mWinInit::GetField;

const std::string calibration = Line({"10:12:40 07.Mar.2003", "2", "0", "10;-55.3", "100;2.1"});

TEST(JoinFields, Fields_are_joined_by_the_character_15_with_none_at_the_ends) {
    const std::array<std::string, 3> fields = {"Ca", "", "12;3"};
    EXPECT_EQ(mWinInit::JoinFields(fields), "Ca\x0F\x0F"
                                            "12;3");
    EXPECT_EQ(mWinInit::JoinFields(std::span(fields).first(1)), "Ca");
    EXPECT_EQ(mWinInit::JoinFields({}), "");
}

TEST(GetField, Fields_are_counted_from_1_and_the_last_runs_to_the_end) {
    EXPECT_EQ(GetField(calibration, 1, 1), "10:12:40 07.Mar.2003");
    EXPECT_EQ(GetField(calibration, 2, 1), "2");
    EXPECT_EQ(GetField(calibration, 5, 1), "100");
    EXPECT_EQ(GetField(calibration, 5, 2), "2.1");
}

TEST(GetField, A_field_that_the_text_does_not_have_is_empty) {
    EXPECT_EQ(GetField(calibration, 6, 1), "");
    EXPECT_EQ(GetField("", 2, 1), "");
    EXPECT_EQ(GetField(calibration, 0, 1), "");
}

TEST(GetField, Without_a_semicolon_both_parts_are_the_whole_field) {
    EXPECT_EQ(GetField(calibration, 3, 1), "0");
    EXPECT_EQ(GetField(calibration, 3, 2), "0");
}

TEST(GetField, The_first_semicolon_divides) {
    EXPECT_EQ(GetField("a;b;c", 1, 1), "a");
    EXPECT_EQ(GetField("a;b;c", 1, 2), "b;c");
    EXPECT_EQ(GetField(";", 1, 1), "");
    EXPECT_EQ(GetField("a;", 1, 2), "");
}

TEST(GetField, A_semicolon_of_another_field_does_not_divide) {
    EXPECT_EQ(GetField(Line({"a", "b;c"}), 1, 2), "a");
}

TEST(GetField, Both_parts_are_trimmed_of_blanks_and_control_characters) {
    EXPECT_EQ(GetField(" \t10 ; -55.3\r\n\x0F next", 1, 1), "10");
    EXPECT_EQ(GetField(" \t10 ; -55.3\r\n\x0F next", 1, 2), "-55.3");
}

TEST(SortPairs, Keys_ascend_and_take_their_values_along) {
    std::array<float, 4> keys = {30, 10, 40, 20};
    std::array<float, 4> values = {3, 1, 4, 2};
    mWinInit::SortPairs(0, 3, keys, values);
    EXPECT_EQ(keys, (std::array<float, 4>{10, 20, 30, 40}));
    EXPECT_EQ(values, (std::array<float, 4>{1, 2, 3, 4}));
}

TEST(SortPairs, Only_the_given_range_is_sorted) {
    std::array<float, 4> keys = {9, 3, 2, 1};
    std::array<float, 4> values = {0, 1, 2, 3};
    mWinInit::SortPairs(1, 2, keys, values);
    EXPECT_EQ(keys, (std::array<float, 4>{9, 2, 3, 1}));
    EXPECT_EQ(values, (std::array<float, 4>{0, 2, 1, 3}));
}

TEST(SortPairs, An_empty_range_changes_nothing) {
    std::array<float, 2> keys = {2, 1};
    std::array<float, 2> values = {0, 1};
    mWinInit::SortPairs(0, -1, keys, values);
    EXPECT_EQ(keys, (std::array<float, 2>{2, 1}));
}

// Worked by hand: 2a 1 2b -> (i=0) 2a 1 2b, since no key is above 2; (i=1) 1 < 2a: 1 2a 2b;
// (i=2) 2b is below none. The order of equal keys is that of the loop.
TEST(SortPairs, Equal_keys_keep_the_order_of_the_double_loop) {
    std::array<float, 3> keys = {2, 1, 2};
    std::array<float, 3> values = {10, 5, 20};
    mWinInit::SortPairs(0, 2, keys, values);
    EXPECT_EQ(keys, (std::array<float, 3>{1, 2, 2}));
    EXPECT_EQ(values, (std::array<float, 3>{5, 10, 20}));
}

// Worked by hand: 1a 1b 2 -> (i=0) 2 1b 1a, since 2 is above 1a; (i=1) 1b is below 2: 1b 2 1a;
// (i=2) 1a is not below 1b but below 2: 1b 1a 2.
TEST(SortPairs, The_last_row_takes_part_in_every_turn_of_the_loop) {
    std::array<float, 3> keys = {1, 1, 2};
    std::array<float, 3> values = {10, 20, 30};
    mWinInit::SortPairs(0, 2, keys, values);
    EXPECT_EQ(keys, (std::array<float, 3>{1, 1, 2}));
    EXPECT_EQ(values, (std::array<float, 3>{20, 10, 30}));
}

} // namespace
