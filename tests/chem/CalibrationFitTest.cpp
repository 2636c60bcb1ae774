#include "chem/CalibrationFit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

CalibrationRecord Record(std::vector<float> standards, std::vector<float> potentials_mV) {
    CalibrationRecord record;
    record.PointCount = static_cast<std::int16_t>(standards.size());
    std::copy(standards.begin(), standards.end(), record.Standard.begin());
    std::copy(potentials_mV.begin(), potentials_mV.end(), record.CaliData.begin());
    return record;
}

// Means: pH 20/3, 24 mV. Sums of products -736 and of squares 38/3: -58.105 mV/pH; at pH 7
// 24 - 58.105 / 3 = 4.632 mV.
TEST(CalibrationFit, Points_that_lie_on_no_line_have_the_line_of_least_squares) {
    const auto fit = FitOf(Record({4, 7, 9}, {180, 2, -110}), "H (pH)");
    EXPECT_EQ(fit.slope, -58.1F);
    EXPECT_EQ(fit.offset_mV, 4.6F);
}

TEST(CalibrationFit, An_ions_offset_is_the_potential_at_a_concentration_of_1) {
    const auto fit = FitOf(Record({0.001F, 0.1F, 10}, {-80, -20, 40}), "Ca");
    EXPECT_EQ(fit.slope, 30.0F);
    EXPECT_EQ(fit.offset_mV, 10.0F);
}

TEST(CalibrationFit, Of_two_points_the_slope_is_the_one_that_was_shown) {
    auto record = Record({4, 7}, {177.5F, 0});
    record.Slope[0] = -59.1F;
    EXPECT_EQ(FitOf(record, "H (pH)").slope, -59.1F);
}

TEST(CalibrationFit, Of_three_points_no_segments_slope_is_taken) {
    auto record = Record({4, 7, 10}, {180, 0, -180});
    record.Slope = {-1, -2};
    EXPECT_EQ(FitOf(record, "H (pH)").slope, -60.0F);
}

TEST(CalibrationFit, Points_of_one_standard_give_no_line) {
    EXPECT_FALSE(FitOf(Record({7, 7}, {1, 2}), "H (pH)").slope);
    EXPECT_FALSE(FitOf(Record({7, 7, 7, 7, 7, 7}, {1, 2, 3, 4, 5, 6}), "H (pH)").slope)
        << "six sixths of 7 are not quite 7";
    EXPECT_FALSE(FitOf(Record({0.03F, 0.03F, 0.03F}, {1, 2, 3}), "Ca").slope);
    EXPECT_FALSE(FitOf(Record({0, 0}, {1, 2}), "Ca").slope) << "none has a logarithm";
    EXPECT_FALSE(FitOf(Record({0, 10}, {1, 2}), "Ca").slope) << "one alone has";
}

} // namespace
