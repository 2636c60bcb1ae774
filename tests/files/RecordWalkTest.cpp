#include "files/RecordWalk.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Step = RecordWalk::Step;
using Steps = std::vector<Step>;
using Lines = std::vector<std::string>;

const std::string dashes(150, '-');

Steps StepsOf(const Lines& lines) {
    RecordWalk walk;
    Steps steps;
    for (const auto& line : lines)
        steps.push_back(walk.Take(line));
    return steps;
}

TEST(RecordWalk, A_record_begins_with_its_comment_and_ends_with_its_separator) {
    EXPECT_EQ(StepsOf({dashes, "Project Name: p", dashes, "Record 1\tAt\tt", "Comment:\tc",
                       "mV             \t1.0", dashes, ""}),
              (Steps{Step::separator, Step::other, Step::separator, Step::other, Step::begins,
                     Step::row, Step::ends, Step::other}));
}

TEST(RecordWalk, A_line_without_a_comment_behind_it_is_no_record) {
    EXPECT_EQ(StepsOf({"Record 7\tAt\tt", "no comment line", "Comment:\tc", "Record x",
                       "Comment:", "record 3", "Comment:"}),
              Steps(7, Step::other));
}

TEST(RecordWalk, The_next_record_ends_one_that_was_cut_off) {
    RecordWalk walk;
    for (const auto* line : {"Record 1\tAt\tt1", "Comment:", "mV\t1", "Record 2\tAt\tt2"})
        walk.Take(line);
    EXPECT_EQ(walk.Number(), 1) << "a first line alone begins nothing";
    EXPECT_EQ(walk.Take("Comment:\t"), Step::begins);
    EXPECT_EQ(walk.Number(), 2);
    EXPECT_EQ(walk.TimeStamp(), "t2");
    EXPECT_EQ(walk.FirstLine(), "Record 2\tAt\tt2");
    EXPECT_TRUE(walk.InRecord());
}

TEST(RecordWalk, A_row_that_looks_like_a_first_line_leaves_the_record_at_hand) {
    RecordWalk walk;
    for (const auto* line : {"Record 1\tAt\tt1", "Comment:", "Record 2\tAt\tt2"})
        walk.Take(line);
    EXPECT_EQ(walk.Take("mV\t1"), Step::row);
    EXPECT_EQ(walk.Number(), 1);
    EXPECT_EQ(walk.Take("------"), Step::ends);
}

TEST(RecordWalk, Of_two_first_lines_the_one_before_the_comment_counts) {
    RecordWalk walk;
    walk.Take("Record 1\tAt\tt1");
    walk.Take("Record 2\tAt\tt2");
    EXPECT_EQ(walk.Take("Comment:\t"), Step::begins);
    EXPECT_EQ(walk.Number(), 2);
}

TEST(RecordWalk, A_comment_that_looks_like_a_marker_is_a_comment) {
    for (const auto* comment :
         {"Comment:\tRecord 9", "Comment:\t------", "Comment:\tComment:", "Comment:"})
        EXPECT_EQ(StepsOf({"Record 1\tAt\tt", comment, "mV\t1", "------"}),
                  (Steps{Step::other, Step::begins, Step::row, Step::ends}))
            << comment;
}

TEST(RecordWalk, A_second_comment_line_and_a_short_dash_line_are_rows) {
    EXPECT_EQ(StepsOf({"Record 1", "Comment:", "Comment:", "-----", "--- ---", "- "}),
              (Steps{Step::other, Step::begins, Step::row, Step::row, Step::row, Step::row}));
}

TEST(RecordWalk, A_separator_between_first_line_and_comment_keeps_them_apart) {
    EXPECT_EQ(StepsOf({"Record 1\tAt\tt", dashes, "Comment:\tc"}),
              (Steps{Step::other, Step::separator, Step::other}));
}

TEST(RecordWalk, Before_the_first_record_there_is_no_number) {
    RecordWalk walk;
    EXPECT_FALSE(walk.InRecord());
    EXPECT_EQ(walk.Number(), 0);
    EXPECT_EQ(walk.TimeStamp(), "");
}

} // namespace
