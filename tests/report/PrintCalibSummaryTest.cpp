#include "report/PrintCalibSummary.h"
#include "support/FakePrinter.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

Measure::CalibSummary PHSummary() {
    CalibrationRecord record;
    record.CalibrationDate = "14:05 07.Mar.2003";
    record.PointCount = 3;
    record.Standard = {4, 7, 10};
    record.CaliData = {177.5F, 0, -172.25F};
    record.Slope = {-59.2F, -57.4F};
    return {"H (pH)", 2, record};
}

/// Text columns at the 9 points in which 100 characters fit 540 points: 5.4 points each; the title
/// is 16.2 points high and two lines of 20.25 away from the labels, lines are 11.25 apart.
TEST(PrintCalibSummary, Labels_headings_and_points_stand_at_their_tab_columns) {
    fake::Printer printer;

    Measure::DrawCalibSummary(PHSummary(), printer);

    EXPECT_EQ(printer.Page(1), (Lines{
                                   "177.66,0 Calibration Summary",
                                   "27,40.5 Electrode Type      :",
                                   "162,40.5 H (pH)",
                                   "27,51.75 Located Channel    :",
                                   "162,51.75 Channel 3",
                                   "27,63 Last Calib. Date    :",
                                   "162,63 14:05 07.Mar.2003",
                                   "27,74.25 Calibration Points :",
                                   "162,74.25 3",
                                   "27,96.75 Calibration Point:",
                                   "162,96.75 pH Buffer",
                                   "324,96.75 mV",
                                   "432,96.75 Slope",
                                   "54,108 1",
                                   "189,108 4",
                                   "351,108 177.5",
                                   "54,119.25 2",
                                   "189,119.25 7",
                                   "351,119.25 0",
                                   "475.2,119.25 -59.2",
                                   "54,130.5 3",
                                   "189,130.5 10",
                                   "351,130.5 -172.25",
                                   "475.2,130.5 -57.4",
                               }));
}

TEST(PrintCalibSummary, The_title_is_larger_and_bold_and_the_rest_is_plain) {
    fake::Printer printer;

    Measure::DrawCalibSummary(PHSummary(), printer);

    EXPECT_TRUE(printer.texts.front().font.bold);
    EXPECT_GT(printer.texts.front().font.size_pt, printer.texts.back().font.size_pt);
    EXPECT_FALSE(printer.texts.back().font.bold);
}

TEST(PrintCalibSummary, A_calibration_in_mol_per_litre_is_headed_ppm_too) {
    fake::Printer printer;
    Measure::CalibSummary summary = PHSummary();
    summary.electrode = "Ca";
    summary.record.StdUnit = 1;
    summary.record.Standard = {0.0001F, 0.001F, 0.01F};

    Measure::DrawCalibSummary(summary, printer);

    const Lines page = printer.Page(1);
    EXPECT_EQ(page[9], "27,96.75 Standards:");
    EXPECT_EQ(page[10], "162,96.75 Concentration(ppm)");
    EXPECT_EQ(page[14], "189,108 0.0001");
}

TEST(PrintCalibSummary, A_name_that_only_contains_the_pH_text_is_headed_as_an_ion) {
    fake::Printer printer;
    Measure::CalibSummary summary = PHSummary();
    summary.electrode = "My (pH)";

    Measure::DrawCalibSummary(summary, printer);

    EXPECT_EQ(printer.Page(1)[9], "27,96.75 Standards:");
}

TEST(PrintCalibSummary, A_channel_without_points_prints_its_labels_and_headings) {
    fake::Printer printer;
    Measure::CalibSummary summary = PHSummary();
    summary.record = {};

    Measure::DrawCalibSummary(summary, printer);

    EXPECT_EQ(printer.Page(1).size(), 13U);
    EXPECT_EQ(printer.Page(1)[8], "162,74.25 0");
}

} // namespace
