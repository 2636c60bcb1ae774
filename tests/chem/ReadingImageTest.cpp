#include "chem/ReadingImage.h"

#include "chem/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

CalibrationRecord Ion(std::initializer_list<float> standards, std::initializer_list<float> data) {
    CalibrationRecord record;
    record.PointCount = static_cast<std::int16_t>(standards.size());
    std::ranges::copy(standards, record.Standard.begin());
    std::ranges::copy(data, record.CaliData.begin());
    return record;
}

bool Holds(const ReadingImage& image, double value) {
    return std::ranges::any_of(image.values,
                               [&](const NumberInterval& part) { return part.Holds(value); });
}

double Lowest(const ReadingImage& image) {
    return std::ranges::min(image.values, {}, &NumberInterval::low).low;
}
double Highest(const ReadingImage& image) {
    return std::ranges::max(image.values, {}, &NumberInterval::high).high;
}

const CalibrationRecord calcium = Ion({1, 10, 100}, {100, 159, 218});

} // namespace

TEST(ReadingImage, A_potential_gives_what_lies_between_its_ends) {
    const auto image = ImageOf(calcium, false, {188.45, 188.55});
    // 10^(1 + 29.45/59) and 10^(1 + 29.55/59)
    EXPECT_NEAR(Lowest(image), 31.5611, 0.001);
    EXPECT_NEAR(Highest(image), 31.6845, 0.001);
    EXPECT_FALSE(image.mayFail);
}

TEST(ReadingImage, A_potential_at_a_point_reaches_into_both_segments) {
    const auto bent = Ion({1, 10, 1000}, {100, 159, 160});
    const auto image = ImageOf(bent, false, {158.9, 159.1});
    EXPECT_TRUE(Holds(image, 10));
    EXPECT_NEAR(Lowest(image), 9.9610, 0.001); // 10^(58.9/59)
    EXPECT_NEAR(Highest(image), 15.849, 0.02); // 10^(1 + 2 * 0.1)
}

TEST(ReadingImage, Two_equal_standards_give_the_mark_beside_what_the_points_give) {
    const auto equal = Ion({10, 10}, {100, 159});
    const auto between = ImageOf(equal, false, {120, 120.1});
    EXPECT_TRUE(Holds(between, -1));
    EXPECT_FALSE(Holds(between, 5));
    EXPECT_TRUE(Holds(ImageOf(equal, false, {99.9, 100.1}), 10));
}

TEST(ReadingImage, Two_points_of_one_potential_give_the_mark_of_a_pH_electrode) {
    const auto equal = Ion({4, 7}, {100, 100});
    const auto image = ImageOf(equal, true, {120, 120.1});
    ASSERT_FALSE(image.values.empty());
    EXPECT_NEAR(Lowest(image), -1, 1e-4);
    EXPECT_NEAR(Highest(image), -1, 1e-4);
}

TEST(ReadingImage, A_potential_that_is_a_points_own_gives_its_standard_and_no_mark) {
    const auto image = ImageOf(Ion({4, 7}, {100, 100}), true, {100, 100});
    EXPECT_TRUE(Holds(image, 4));
    EXPECT_FALSE(Holds(image, -1));
}

TEST(ReadingImage, A_standard_without_a_logarithm_may_have_failed) {
    EXPECT_TRUE(ImageOf(Ion({0, 10}, {100, 159}), false, {120, 120.1}).mayFail);
}

TEST(ReadingImage, A_potential_of_the_calibration_that_was_rounded_for_the_header_is_allowed_for) {
    CalibrationRecord exact = Ion({1, 10}, {100.00004F, 110.00004F});
    CalibrationRecord written = Ion({1, 10}, {100, 110}); // seven digits of them
    const std::array<float, 6>& x = exact.CaliData;
    const float reading = 300; // far beyond the points, where the slope's error counts
    const float converted = Measure::InterpolateReading(
        false, 2, std::span(x).first(2), std::span(exact.Standard).first(2), reading);
    const auto image = ImageOf(written, false, {299.999, 300.001});
    EXPECT_TRUE(Holds(image, converted));
}

TEST(ReadingImage, A_potential_of_zero_is_no_point_behind_the_last) {
    const auto image = ImageOf(calcium, false, {-0.05, 0.05});
    EXPECT_FALSE(Holds(image, 0));
    EXPECT_NEAR(Lowest(image), 0.0202, 1E-4); // 10^(-100/59)
    EXPECT_NEAR(Highest(image), 0.0202, 1E-4);
}

TEST(ReadingImage, What_single_precision_leaves_open_is_left_open_on_both_sides) {
    const auto image = ImageOf(calcium, false, {159, 159});
    EXPECT_LT(Lowest(image), 10);
    EXPECT_GT(Highest(image), 10);
    EXPECT_NEAR(Lowest(image), 10, 0.001);
    EXPECT_NEAR(Highest(image), 10, 0.001);
}

TEST(ReadingImage, A_single_reading_between_two_potentials_is_converted) {
    const float last = std::nextafter(std::nextafter(120.0F, 200.0F), 200.0F);
    const auto image = ImageOf(calcium, false, {120, last});
    ASSERT_EQ(image.values.size(), 1U);
    EXPECT_NEAR(Lowest(image), 2.1826, 0.001); // 10^(20/59)
}

TEST(ReadingImage, The_scale_that_a_measurement_has_left_in_force_stays) {
    Measure::IsPHMode = true;
    ImageOf(calcium, false, {188.45, 188.55});
    EXPECT_TRUE(Measure::IsPHMode);
    Measure::Reset();
}
