#include "report/LoadProgress.h"

#include <gtest/gtest.h>

using Mreport::LoadProgress;

TEST(LoadProgressTest, The_first_line_tells_where_the_load_begins) {
    LoadProgress progress;
    progress.Begin(10'000);
    EXPECT_EQ(progress.Take(20), "Loading data, 0% complete. [Press ESC to stop loading]");
}

TEST(LoadProgressTest, A_text_comes_when_the_rounded_percentage_changes_and_not_between) {
    LoadProgress progress;
    progress.Begin(10'000); // a percent is 100 bytes: 2 % from byte 150 on, 3 % from 250
    progress.Take(120);
    EXPECT_EQ(progress.UntilNext(), 30U);
    EXPECT_EQ(progress.Take(29), std::nullopt);
    EXPECT_EQ(progress.Take(1), "Loading data, 2% complete. [Press ESC to stop loading]");
    EXPECT_EQ(progress.UntilNext(), 100U);
    EXPECT_EQ(progress.Take(99), std::nullopt);
}

TEST(LoadProgressTest, A_file_that_has_grown_since_is_never_more_than_whole) {
    LoadProgress progress;
    progress.Begin(100);
    EXPECT_EQ(progress.Take(250), progress.Whole());
    EXPECT_EQ(progress.Whole(), "Loading data, 100% complete. [Press ESC to stop loading]");
}

TEST(LoadProgressTest, An_empty_file_is_whole_at_once) {
    LoadProgress progress;
    progress.Begin(0);
    EXPECT_EQ(progress.Whole(), "Loading data, 100% complete. [Press ESC to stop loading]");
}
