#include "simulator/FrameEncoder.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace simulator;

namespace {

std::string Text(const Frame& frame) {
    return {frame.begin(), frame.end()};
}

} // namespace

TEST(EncodeFrame, Writes_signs_digits_in_tenths_tabs_and_the_end) {
    EXPECT_EQ(Text(EncodeFrame({12.3, -45.6, 0, 999.9, -999.9, 0.1, -0.1, 100})),
              "+0123\t-0456\t+0000\t+9999\t-9999\t+0001\t-0001\t+1000\x04");
}

TEST(EncodeFrame, Rounds_to_the_nearest_tenth_and_gives_0_no_minus) {
    EXPECT_EQ(Text(EncodeFrame({0.04, -0.04, 0.06, -0.06, 12.34, 12.36, 0.25, -0.25})),
              "+0000\t+0000\t+0001\t-0001\t+0123\t+0124\t+0003\t-0003\x04");
}

TEST(EncodeFrame, Holds_what_four_digits_cannot_at_the_end_of_the_range) {
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Text(EncodeFrame({1000, -1000, 1e30, -1e30, infinite, -infinite, 999.94, 999.96})),
              "+9999\t-9999\t+9999\t-9999\t+9999\t-9999\t+9999\t+9999\x04");
}
