#include "screens/controls/TimeTicker.h"

#include <gtest/gtest.h>

TEST(TimeTicker, Each_span_of_the_trend_gets_whole_steps_that_fit) {
    EXPECT_EQ(TimeTicker::Step(60, 8), 10);     // 7 labels over a minute
    EXPECT_EQ(TimeTicker::Step(600, 8), 120);   // every 2 minutes
    EXPECT_EQ(TimeTicker::Step(3600, 8), 600);  // every 10 minutes
    EXPECT_EQ(TimeTicker::Step(3600, 3), 1800); // a narrow window
    EXPECT_EQ(TimeTicker::Step(60, 100), 5);
}

TEST(TimeTicker, No_room_at_all_still_gives_a_step) {
    EXPECT_EQ(TimeTicker::Step(3600, 0), 1800);
}

TEST(TimeTicker, Labels_are_times_of_day_with_seconds_where_the_step_has_them) {
    EXPECT_EQ(TimeTicker::Label(53640, 120), "14:54");
    EXPECT_EQ(TimeTicker::Label(53650, 10), "14:54:10");
}

TEST(TimeTicker, An_axis_over_midnight_goes_on_with_the_other_day) {
    EXPECT_EQ(TimeTicker::Label(-60, 60), "23:59");
    EXPECT_EQ(TimeTicker::Label(0, 60), "00:00");
    EXPECT_EQ(TimeTicker::Label(86400 + 60, 60), "00:01");
}
