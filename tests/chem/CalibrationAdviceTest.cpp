#include "chem/CalibrationCurve.h"
#include "chem/StabilityMark.h"
#include "chem/TheoreticalSlope.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;

namespace {

constexpr auto instant = 0ms; // where the time of a reading does not matter

void Add(StabilityMark& mark, std::initializer_list<float> readings_mV) {
    for (const float reading : readings_mV)
        mark.Add(reading, instant);
}

CalibrationRecord Record(std::initializer_list<float> standards,
                         std::initializer_list<float> readings_mV) {
    CalibrationRecord record;
    record.PointCount = static_cast<std::int16_t>(standards.size());
    std::copy(standards.begin(), standards.end(), record.Standard.begin());
    std::copy(readings_mV.begin(), readings_mV.end(), record.CaliData.begin());
    return record;
}

} // namespace

TEST(StabilityMark, Nine_readings_are_never_steady) {
    StabilityMark mark;
    Add(mark, {1, 1, 1, 1, 1, 1, 1, 1, 1});
    EXPECT_FALSE(mark.IsSteady());
    EXPECT_EQ(mark.Text(), "drifting");
    mark.Add(1, instant);
    EXPECT_TRUE(mark.IsSteady());
    EXPECT_EQ(mark.Text(), "steady");
}

TEST(StabilityMark, A_wider_window_wants_as_many_readings) {
    StabilityMark mark(28);
    for (int i = 0; i < 27; ++i)
        mark.Add(1, instant);
    EXPECT_FALSE(mark.IsSteady());
    mark.Add(1, instant);
    EXPECT_TRUE(mark.IsSteady());
}

TEST(StabilityMark, A_spread_of_exactly_two_tenths_is_steady_and_three_are_not) {
    StabilityMark mark;
    Add(mark, {100.1F, 100.2F, 100.3F, 100.1F, 100.2F, 100.3F, 100.1F, 100.2F, 100.3F, 100.1F});
    EXPECT_TRUE(mark.IsSteady());
    mark.Add(100.4F, instant);
    EXPECT_FALSE(mark.IsSteady());
}

TEST(StabilityMark, An_early_jump_is_forgotten_after_ten_more_readings) {
    StabilityMark mark;
    Add(mark, {-50});
    for (int i = 0; i < 9; ++i)
        mark.Add(12, instant);
    EXPECT_FALSE(mark.IsSteady());
    mark.Add(12, instant);
    EXPECT_TRUE(mark.IsSteady());
}

TEST(StabilityMark, A_slow_drift_over_the_window_is_no_steady_reading) {
    StabilityMark mark;
    for (int i = 0; i < 30; ++i)
        mark.Add(static_cast<float>(i) * 0.05F, instant); // 0.45 mV over ten readings
    EXPECT_FALSE(mark.IsSteady());
}

TEST(StabilityMark, A_new_reading_starts_with_an_empty_window_and_a_new_time) {
    StabilityMark mark;
    mark.Start(5s);
    for (int i = 0; i < 10; ++i)
        mark.Add(12, instant);
    mark.Start(70s);
    EXPECT_FALSE(mark.IsSteady());
    EXPECT_EQ(mark.Elapsed(71500ms), 1500ms);
    for (int i = 0; i < 9; ++i)
        mark.Add(12, instant);
    EXPECT_FALSE(mark.IsSteady());
}

TEST(StabilityMark, Until_it_is_steady_the_drift_is_told_as_soon_as_it_is_known) {
    StabilityMark mark;
    mark.Start(0ms);
    mark.Add(100, 0ms);
    mark.Add(100.1F, 3000ms);
    EXPECT_EQ(mark.Text(), "drifting");
    mark.Add(100.2F, 6000ms); // 0.2 mV in a tenth of a minute
    EXPECT_EQ(mark.Text(), "+2.0 mV/min");
    mark.Start(10s);
    EXPECT_EQ(mark.Text(), "drifting") << "nothing is left of the reading before";
}

TEST(StabilityMark, Time_is_shown_in_minutes_and_seconds) {
    EXPECT_EQ(MinutesAndSeconds(0ms), "0:00");
    EXPECT_EQ(MinutesAndSeconds(9999ms), "0:09");
    EXPECT_EQ(MinutesAndSeconds(10s), "0:10");
    EXPECT_EQ(MinutesAndSeconds(65s), "1:05");
    EXPECT_EQ(MinutesAndSeconds(3600s), "60:00");
}

TEST(TheoreticalSlope, The_constant_is_the_ideal_slope_at_25_degrees) {
    constexpr double gasConstant_J_per_mol_K = 8.314462618;
    constexpr double faraday_C_per_mol = 96485.33212;
    const double slope_mV =
        gasConstant_J_per_mol_K * 298.15 * std::log(10.0) / faraday_C_per_mol * 1000;
    EXPECT_NEAR(TheoreticalSlope::nernst_mV_per_decade, slope_mV, 0.005);
}

TEST(TheoreticalSlope, It_follows_the_charge_and_for_pH_runs_down) {
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Of("Na"), 59.16F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Of("Ca"), 29.58F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Of("Cl"), -59.16F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Of("S"), -29.58F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Of("H (pH)"), -59.16F);
    EXPECT_FALSE(TheoreticalSlope::Of("Redox"));
    EXPECT_FALSE(TheoreticalSlope::Of("None"));
}

TEST(TheoreticalSlope, The_percentage_has_one_decimal_and_the_sign_of_the_wrong_way) {
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Percent(29.58F, "Ca"), 100.0F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Percent(-59.2F, "H (pH)"), 100.1F);
    EXPECT_FLOAT_EQ(*TheoreticalSlope::Percent(59.16F, "Cl"), -100.0F);
    EXPECT_FALSE(TheoreticalSlope::Percent(59.16F, "Redox"));
}

TEST(TheoreticalSlope, From_90_to_105_percent_is_usual) {
    EXPECT_FALSE(TheoreticalSlope::IsUsual(89.9F));
    EXPECT_TRUE(TheoreticalSlope::IsUsual(90.0F));
    EXPECT_TRUE(TheoreticalSlope::IsUsual(105.0F));
    EXPECT_FALSE(TheoreticalSlope::IsUsual(105.1F));
}

TEST(CalibrationCurve, A_pH_calibration_is_plotted_over_pH_in_the_order_recorded) {
    const auto curve = CurveOf(Record({7, 4}, {0, 177.5F}), true);
    EXPECT_EQ(curve.standards, Quantity::pH);
    ASSERT_EQ(curve.points.size(), 2U);
    EXPECT_DOUBLE_EQ(curve.points[0].x, 7);
    EXPECT_DOUBLE_EQ(curve.points[1].potential_mV, 177.5);
}

TEST(CalibrationCurve, Concentrations_are_plotted_over_their_decimal_logarithm) {
    CalibrationRecord record = Record({0.01F, 100}, {-10, 110});
    const auto ppm = CurveOf(record, false);
    EXPECT_NEAR(ppm.points.at(0).x, -2, 1E-6); // single precision of the standard
    EXPECT_DOUBLE_EQ(ppm.points.at(1).x, 2);
    EXPECT_EQ(ppm.standards, Quantity::ppm);
    record.StdUnit = 1;
    EXPECT_EQ(CurveOf(record, false).standards, Quantity::mol_l);
}

TEST(CalibrationCurve, A_standard_without_a_logarithm_is_left_out) {
    EXPECT_EQ(CurveOf(Record({0, 10, -1}, {1, 2, 3}), false).points.size(), 1U);
}
