#include "platform/System.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(Clock, The_wall_clock_is_the_local_time_of_the_C_library) {
    const auto clock = platform::MakeClock();
    for (;;) {
        const std::time_t before = std::time(nullptr);
        const std::tm expected = *std::localtime(&before);
        const auto now = clock->Now();
        if (std::time(nullptr) != before)
            continue; // a second ended between the two looks
        EXPECT_EQ(now.year, expected.tm_year + 1900);
        EXPECT_EQ(now.month, expected.tm_mon + 1);
        EXPECT_EQ(now.day, expected.tm_mday);
        EXPECT_EQ(now.hour, expected.tm_hour);
        EXPECT_EQ(now.minute, expected.tm_min);
        EXPECT_NEAR(now.second, expected.tm_sec, 1); // the two clocks may turn one after the other
        break;
    }
}

TEST(Clock, The_monotonic_clock_never_goes_back) {
    const auto clock = platform::MakeClock();
    auto last = clock->Monotonic();
    for (int look = 0; look < 100000; ++look) {
        const auto now = clock->Monotonic();
        ASSERT_GE(now, last);
        last = now;
    }
}

} // namespace
