#include "files/ReadingGaps.h"

#include <gtest/gtest.h>

namespace {

using FileOpr::ReadingGaps;

LocalTime At(int hour, int minute, int second, int day = 7) {
    return {2003, 3, day, hour, minute, second};
}

} // namespace

TEST(ReadingGaps, A_gap_is_told_from_its_begin_to_its_end) {
    ReadingGaps gaps;
    gaps.Lost(At(2, 14, 8));
    EXPECT_TRUE(gaps.Since());
    EXPECT_EQ(gaps.Text(), "");
    gaps.Lost(At(2, 15, 0)); // a further try that failed
    gaps.Answered(At(2, 16, 31));
    EXPECT_FALSE(gaps.Since());
    EXPECT_EQ(gaps.Text(), "no readings from 02:14:08 to 02:16:31");
}

TEST(ReadingGaps, Readings_without_a_gap_tell_nothing) {
    ReadingGaps gaps;
    gaps.Answered(At(2, 16, 31));
    EXPECT_EQ(gaps.Text(), "");
    EXPECT_EQ(gaps.InComment("sample 3"), "sample 3");
}

TEST(ReadingGaps, They_stand_behind_the_analysts_comment_until_they_are_noted) {
    ReadingGaps gaps;
    gaps.Lost(At(2, 14, 8));
    gaps.Answered(At(2, 16, 31));
    EXPECT_EQ(gaps.InComment(""), "no readings from 02:14:08 to 02:16:31");
    EXPECT_EQ(gaps.InComment("sample 3"), "sample 3; no readings from 02:14:08 to 02:16:31");
    gaps.Noted();
    EXPECT_EQ(gaps.InComment("sample 4"), "sample 4");
}

TEST(ReadingGaps, Several_before_one_record_are_counted) {
    ReadingGaps gaps;
    const auto lose = [&gaps](int hour) {
        gaps.Lost(At(hour, 14, 8));
        gaps.Answered(At(hour, 16, 31));
    };
    lose(2);
    lose(3);
    EXPECT_EQ(gaps.Text(), "no readings 2 times from 02:14:08 to 03:16:31");
    lose(4);
    EXPECT_EQ(gaps.Text(), "no readings 3 times from 02:14:08 to 04:16:31");
}

TEST(ReadingGaps, A_gap_over_midnight_has_its_dates) {
    ReadingGaps gaps;
    gaps.Lost(At(23, 58, 0, 7));
    gaps.Answered(At(0, 2, 0, 8));
    EXPECT_EQ(gaps.Text(), "no readings from 23:58:00 07.Mar.2003 to 00:02:00 08.Mar.2003");
}

TEST(ReadingGaps, One_that_was_given_up_is_told_nowhere_and_the_next_begins_for_itself) {
    ReadingGaps gaps;
    gaps.Lost(At(1, 0, 0));
    gaps.Answered(At(1, 1, 0));
    gaps.Lost(At(2, 0, 0));
    gaps.GiveUp();
    EXPECT_FALSE(gaps.Since());
    EXPECT_EQ(gaps.Text(), "no readings from 01:00:00 to 01:01:00") << "no record tells of it yet";
    gaps.Noted();
    gaps.Lost(At(4, 0, 0));
    gaps.Answered(At(4, 1, 0));
    EXPECT_EQ(gaps.Text(), "no readings from 04:00:00 to 04:01:00");
}

TEST(ReadingGaps, An_open_gap_outlives_the_noting_of_those_before) {
    ReadingGaps gaps;
    gaps.Lost(At(1, 0, 0));
    gaps.Answered(At(1, 1, 0));
    gaps.Lost(At(2, 0, 0));
    gaps.Noted();
    gaps.Answered(At(2, 1, 0));
    EXPECT_EQ(gaps.Text(), "no readings from 02:00:00 to 02:01:00");
    gaps.Clear();
    EXPECT_EQ(gaps.Text(), "");
}
