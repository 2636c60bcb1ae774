#include "base/RunTimeError.h"
#include "chem/Measure.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

class InterpolateReading : public testing::Test {
protected:
    void SetUp() override { Measure::Reset(); }
    void TearDown() override { Measure::Reset(); }

    static float OnLinearScale(const std::vector<float>& input, const std::vector<float>& output,
                               float reading) {
        Measure::IsPHMode = true;
        return Measure::InterpolateReading(input.size(), input, output, reading);
    }

    static float OnLogarithmicScale(const std::vector<float>& input,
                                    const std::vector<float>& output, float reading) {
        Measure::IsPHMode = false;
        return Measure::InterpolateReading(input.size(), input, output, reading);
    }

    static std::string ErrorOf(bool linear, std::size_t points, const std::vector<float>& input,
                               const std::vector<float>& output, float reading) {
        Measure::IsPHMode = linear;
        try {
            Measure::InterpolateReading(points, input, output, reading);
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return "no error";
    }
};

const std::vector<float> pHInput{177.5F, 0.0F};
const std::vector<float> pHOutput{4.0F, 7.0F};
const std::vector<float> ionInput{100, 159, 218};
const std::vector<float> ionOutput{1, 10, 100};

TEST_F(InterpolateReading, A_pH_reading_between_two_buffers_lies_on_the_line_between_them) {
    // (59.0 - 177.5) * (7.0 - 4.0) / (0.0 - 177.5) + 4.0
    EXPECT_NEAR(OnLinearScale(pHInput, pHOutput, 59.0F), 6.0028169F, 1e-6F);
}

TEST_F(InterpolateReading, A_pH_reading_beyond_the_buffers_extends_their_line) {
    // (300 - 177.5) * 3 / -177.5 + 4
    EXPECT_NEAR(OnLinearScale(pHInput, pHOutput, 300.0F), 1.9295775F, 1e-6F);
    // (-59 - 177.5) * 3 / -177.5 + 4
    EXPECT_NEAR(OnLinearScale(pHInput, pHOutput, -59.0F), 7.9971831F, 1e-6F);
}

TEST_F(InterpolateReading, The_width_of_a_pH_segment_is_kept_in_single_precision) {
    // In double throughout, the last bit is another: 6.2194796.
    EXPECT_EQ(OnLinearScale({150.0F, 0.1F}, {4.0F, 7.0F}, 39.1F), 6.21948004F);
}

TEST_F(InterpolateReading, An_ion_reading_in_the_second_segment_uses_that_segments_slope) {
    // 10^(1 + 29.5 / 59.0)
    EXPECT_NEAR(OnLogarithmicScale(ionInput, ionOutput, 188.5F), 31.622776F, 1e-5F);
}

TEST_F(InterpolateReading, An_ion_reading_outside_the_standards_extends_the_outer_segments) {
    EXPECT_NEAR(OnLogarithmicScale(ionInput, ionOutput, 41.0F), 0.1F, 1e-7F);
    EXPECT_NEAR(OnLogarithmicScale(ionInput, ionOutput, 277.0F), 1000.0F, 1e-3F);
}

TEST_F(InterpolateReading, A_falling_table_of_an_anion_is_searched_in_its_own_direction) {
    const std::vector<float> falling{218, 159, 100};
    EXPECT_NEAR(OnLogarithmicScale(falling, ionOutput, 188.5F), 3.1622777F, 1e-6F);
    EXPECT_NEAR(OnLogarithmicScale(falling, ionOutput, 129.5F), 31.622776F, 1e-5F);
    EXPECT_NEAR(OnLogarithmicScale(falling, ionOutput, 277.0F), 0.1F, 1e-7F);
    EXPECT_NEAR(OnLogarithmicScale(falling, ionOutput, 41.0F), 1000.0F, 1e-3F);
}

TEST_F(InterpolateReading, A_reading_of_a_calibration_point_gives_its_standard_unchanged) {
    // 10^log10(0.3) differs from 0.3F in the last place, so equality shows the short way.
    const std::vector<float> standards{0.3F, 0.7F, 1.1F};
    const std::vector<float> falling{218, 159, 100};
    for (std::size_t k = 0; k < standards.size(); ++k) {
        EXPECT_EQ(OnLogarithmicScale(ionInput, standards, ionInput[k]), standards[k]);
        EXPECT_EQ(OnLogarithmicScale(falling, standards, falling[k]), standards[k]);
    }
    EXPECT_EQ(OnLinearScale(pHInput, pHOutput, 177.5F), 4.0F);
    EXPECT_EQ(OnLinearScale(pHInput, pHOutput, 0.0F), 7.0F);
}

TEST_F(InterpolateReading, An_exact_hit_needs_no_logarithm_of_its_standard) {
    EXPECT_EQ(OnLogarithmicScale({100, 159}, {-5, 10}, 100.0F), -5.0F);
    EXPECT_EQ(OnLogarithmicScale({100, 159}, {10, -5}, 159.0F), -5.0F);
    EXPECT_EQ(OnLogarithmicScale({159, 100}, {-5, 10}, 159.0F), -5.0F);
    EXPECT_EQ(OnLogarithmicScale({159, 100}, {10, -5}, 100.0F), -5.0F);
}

TEST_F(InterpolateReading, Two_points_with_one_reading_give_minus_one_on_the_linear_scale) {
    // Only a reading beyond the table meets the last segment: at its own reading it is a hit.
    EXPECT_EQ(OnLinearScale({0, 100, 100}, {4, 7, 10}, 120.0F), -1.0F);
    EXPECT_NEAR(OnLinearScale({0, 100, 100}, {4, 7, 10}, 50.0F), 5.5F, 1e-6F);
}

TEST_F(InterpolateReading, Two_equal_standards_give_minus_one_in_their_segment_alone) {
    const std::vector<float> standards{1, 10, 10};
    EXPECT_EQ(OnLogarithmicScale(ionInput, standards, 188.5F), -1.0F);
    EXPECT_EQ(OnLogarithmicScale(ionInput, standards, 300.0F), -1.0F);
    EXPECT_NEAR(OnLogarithmicScale(ionInput, standards, 129.5F), 3.1622777F, 1e-6F);
}

TEST_F(InterpolateReading, Equal_first_readings_make_an_ascending_table) {
    // Ascending: 50 <= 100 stops at the first point. Descending would run on to the last segment.
    EXPECT_EQ(OnLinearScale({100, 100, 200}, {4, 7, 10}, 50.0F), -1.0F);
    EXPECT_NEAR(OnLinearScale({100, 100, 200}, {4, 7, 10}, 150.0F), 8.5F, 1e-6F);
}

TEST_F(InterpolateReading, The_slope_and_the_quotient_are_rounded_to_single_precision) {
    const float x0 = 101.7F;
    const float x1 = 158.9F;
    const float reading = 133.3F;
    const double log0 = std::log(double{1.3F}) / std::log(10.0);
    const double decades = std::log(double{11.9F}) / std::log(10.0) - log0;
    const auto slope = static_cast<float>((double{x1} - double{x0}) / decades);
    const auto quotient = static_cast<float>((double{reading} - double{x0}) / double{slope});
    const auto expected = static_cast<float>(std::pow(10.0, log0 + double{quotient}));
    EXPECT_EQ(OnLogarithmicScale({x0, x1}, {1.3F, 11.9F}, reading), expected);

    const auto perMillivolt =
        static_cast<float>((double{11.9F} - double{1.3F}) / (double{x1} - double{x0}));
    const auto line =
        static_cast<float>((double{reading} - double{x0}) * double{perMillivolt} + double{1.3F});
    EXPECT_EQ(OnLinearScale({x0, x1}, {1.3F, 11.9F}, reading), line);
}

TEST_F(InterpolateReading, A_table_of_none_or_one_point_is_out_of_range) {
    EXPECT_EQ(ErrorOf(true, 0, {}, {}, 5), "Subscript out of range");
    EXPECT_EQ(ErrorOf(true, 1, {100}, {7}, 100), "Subscript out of range");
    EXPECT_EQ(ErrorOf(false, 1, {100}, {7}, 5), "Subscript out of range");
    EXPECT_EQ(ErrorOf(true, 9, {100, 200}, {7, 8}, 500), "Subscript out of range");
}

TEST_F(InterpolateReading, A_standard_of_zero_or_less_makes_the_logarithm_fail) {
    EXPECT_EQ(ErrorOf(false, 2, {100, 200}, {0, 10}, 150),
              "Logarithm of a number that is not above 0");
    EXPECT_EQ(ErrorOf(false, 2, {100, 200}, {10, -1}, 150),
              "Logarithm of a number that is not above 0");
}

TEST_F(InterpolateReading, A_slope_of_zero_on_the_logarithmic_scale_is_a_division_by_zero) {
    EXPECT_EQ(ErrorOf(false, 2, {100, 100}, {1, 10}, 150), "Division by zero");
}

TEST_F(InterpolateReading, A_result_beyond_single_precision_is_an_overflow) {
    // One decade per mV: 10^5000.
    EXPECT_EQ(ErrorOf(false, 2, {0, 1}, {1, 10}, 5000), "Overflow");
    const float huge = std::numeric_limits<float>::max();
    EXPECT_EQ(ErrorOf(true, 2, {0, 1}, {0, huge}, 2), "Overflow");
    EXPECT_EQ(OnLinearScale({0, 2}, {huge, huge}, 1), huge);
}

} // namespace
