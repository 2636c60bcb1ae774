#include "report/PrintCalibSummary.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

CalibrationRecord ThreeBuffers() {
    CalibrationRecord record;
    record.CalibrationDate = "14:05 07.Mar.2003";
    record.PointCount = 3;
    record.Standard = {4, 7, 10};
    record.CaliData = {177.5F, 0, -172.25F};
    record.Slope = {-59.2F, -57.4F};
    return record;
}

/// 100 characters fit 540 points at 9 points: 5.4 points each, column 5 begins behind four of them.
/// The title is 16.2 points high and two lines of 20.25 away from the labels, lines are 11.25
/// apart.
TEST(PrintCalibSummary, Labels_headings_and_points_stand_at_their_tab_columns) {
    fake::Printer printer;

    Measure::DrawCalibSummary(CalibrationSummary::Compose("H (pH)", 2, ThreeBuffers()), printer);

    EXPECT_EQ(printer.Page(1), (Lines{
                                   "177.66,0 Calibration Summary",
                                   "21.6,40.5 Electrode Type      :",
                                   "156.6,40.5 H (pH)",
                                   "21.6,51.75 Located Channel    :",
                                   "156.6,51.75 Channel 3",
                                   "21.6,63 Last Calib. Date    :",
                                   "156.6,63 14:05 07.Mar.2003",
                                   "21.6,74.25 Calibration Points :",
                                   "156.6,74.25 3",
                                   "21.6,96.75 Calibration Point:",
                                   "156.6,96.75 pH Buffer",
                                   "318.6,96.75 mV",
                                   "426.6,96.75 Slope",
                                   "48.6,108 1",
                                   "183.6,108 4",
                                   "345.6,108 177.5",
                                   "48.6,119.25 2",
                                   "183.6,119.25 7",
                                   "345.6,119.25 0",
                                   "469.8,119.25 -59.2",
                                   "48.6,130.5 3",
                                   "183.6,130.5 10",
                                   "345.6,130.5 -172.25",
                                   "469.8,130.5 -57.4",
                               }));
}

TEST(PrintCalibSummary, The_title_is_larger_and_bold_and_the_rest_is_plain) {
    fake::Printer printer;

    Measure::DrawCalibSummary(CalibrationSummary::Compose("H (pH)", 2, ThreeBuffers()), printer);

    EXPECT_TRUE(printer.texts.front().font.bold);
    EXPECT_GT(printer.texts.front().font.size_pt, printer.texts.back().font.size_pt);
    EXPECT_FALSE(printer.texts.back().font.bold);
}

TEST(PrintCalibSummary, A_channel_without_points_prints_its_labels_and_headings) {
    fake::Printer printer;

    Measure::DrawCalibSummary(CalibrationSummary::Compose("Ca", 0, {}), printer);

    EXPECT_EQ(printer.Page(1).back(), "426.6,96.75 Slope");
}

TEST(PrintCalibSummary, It_goes_to_the_installed_printer_as_one_page) {
    fake::Platform platform;

    EXPECT_EQ(Measure::PrintCalibSummary("H (pH)", 2, ThreeBuffers()),
              platform::PrintOutcome::printed);

    EXPECT_EQ(platform.printing.names, Lines{"Calibration Summary"});
    EXPECT_EQ(platform.printing.documents.at(0).PageNumber(), 1);
    EXPECT_EQ(platform.printing.documents.at(0).texts.size(), 24U);
}

TEST(PrintCalibSummary, A_printer_that_fails_is_reported_with_the_routine_s_name) {
    fake::Platform platform;
    platform.printing.failure = "Printing Calibration Summary: the printer Lab is stopped";

    EXPECT_THROW(Measure::PrintCalibSummary("H (pH)", 2, ThreeBuffers()), RunTimeError);

    EXPECT_EQ(Mcommon::errorLocation, "PrintCalibSummary");
}

} // namespace
