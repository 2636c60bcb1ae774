#include "report/CalibrationSummary.h"

#include <gtest/gtest.h>

namespace {

using CalibrationSummary::Line;

CalibrationRecord ThreeBuffers() {
    CalibrationRecord record;
    record.CalibrationDate = "14:05 07.Mar.2003";
    record.PointCount = 3;
    record.Standard = {4.01F, 7, 10};
    record.CaliData = {177.5F, 0, -1E-05F};
    record.Slope = {-59.2F, -0.00391F, 99};
    return record;
}

TEST(CalibrationSummary, The_labels_keep_their_uneven_blanks) {
    const auto summary = CalibrationSummary::Compose("H (pH)", 2, ThreeBuffers());
    EXPECT_EQ(summary.title, "Calibration Summary");
    const std::vector<Line> expected = {
        {{5, "Electrode Type      :"}, {30, "H (pH)"}},
        {{5, "Located Channel    :"}, {30, "Channel 3"}},
        {{5, "Last Calib. Date    :"}, {30, "14:05 07.Mar.2003"}},
        {{5, "Calibration Points :"}, {30, "3"}},
    };
    EXPECT_EQ(summary.labels, expected);
}

TEST(CalibrationSummary, The_heading_of_a_pH_electrode_names_buffers) {
    const Line expected{{5, "Calibration Point:"}, {30, "pH Buffer"}, {60, "mV"}, {80, "Slope"}};
    EXPECT_EQ(CalibrationSummary::Compose("H (pH)", 0, {}).heading, expected);
}

TEST(CalibrationSummary, Any_other_heading_says_ppm_even_for_mol_per_litre) {
    CalibrationRecord record;
    record.StdUnit = 1;
    const Line expected{{5, "Standards:"}, {30, "Concentration(ppm)"}, {60, "mV"}, {80, "Slope"}};
    EXPECT_EQ(CalibrationSummary::Compose("Ca", 0, record).heading, expected);
    EXPECT_EQ(CalibrationSummary::Compose("my (pH) glass", 0, record).heading, expected);
}

TEST(CalibrationSummary, Each_point_shows_the_slope_that_ends_at_it_and_the_first_none) {
    const auto summary = CalibrationSummary::Compose("H (pH)", 0, ThreeBuffers());
    const std::vector<Line> expected = {
        {{10, "1"}, {35, "4.01"}, {65, "177.5"}, {88, ""}},
        {{10, "2"}, {35, "7"}, {65, "0"}, {88, "-59.2"}},
        {{10, "3"}, {35, "10"}, {65, "-1E-05"}, {88, "-0.00391"}},
    };
    EXPECT_EQ(summary.points, expected);
}

TEST(CalibrationSummary, A_count_beyond_the_table_prints_the_points_that_exist) {
    auto record = ThreeBuffers();
    record.PointCount = 40;
    EXPECT_EQ(CalibrationSummary::Compose("Ca", 0, record).points.size(), 6U);
    record.PointCount = -1;
    EXPECT_TRUE(CalibrationSummary::Compose("Ca", 0, record).points.empty());
}

} // namespace
