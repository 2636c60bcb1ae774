#include "history/Standing.h"

#include "files/SetUpRun.h"
#include "history/Notes.h"
#include "settings/mWinInit.h"
#include "support/NotedEntries.h"

#include <gtest/gtest.h>

using History::PastCalibration;
using History::StandingOf;

namespace {

constexpr LocalTime today{2026, 3, 2, 9, 0, 0};

std::optional<PastCalibration> Past(float percent, const LocalTime& at) {
    PastCalibration past;
    past.at = at;
    past.slope_percent = percent;
    return past;
}

std::string TextOf(float percent, const std::optional<PastCalibration>& last) {
    return StandingOf(percent, last, today).text;
}

} // namespace

TEST(HistoryStanding, A_calibration_is_told_with_its_change_since_the_last_one) {
    EXPECT_EQ(TextOf(97.0F, Past(98.2F, {2026, 2, 27, 23, 0, 0})),
              "97.0 %, 1.2 % less than 3 days ago");
    EXPECT_EQ(TextOf(98.2F, Past(97.0F, {2026, 3, 1, 23, 59, 0})),
              "98.2 %, 1.2 % more than yesterday");
    EXPECT_EQ(TextOf(98.2F, Past(98.2F, {2026, 3, 2, 8, 0, 0})), "98.2 %, as earlier today");
    EXPECT_EQ(TextOf(-97.0F, Past(97.0F, {2025, 3, 2, 8, 0, 0})),
              "-97.0 %, 194.0 % less than 365 days ago");
}

TEST(HistoryStanding, The_first_calibration_is_told_alone_and_one_without_theory_not_at_all) {
    EXPECT_EQ(TextOf(97.0F, std::nullopt), "97.0 %");
    EXPECT_EQ(TextOf(97.0F, PastCalibration{}), "97.0 %");
    EXPECT_EQ(StandingOf(std::nullopt, Past(97, today), today).text, "");
}

TEST(HistoryStanding, Only_90_to_105_percent_is_usual) {
    EXPECT_TRUE(StandingOf(90.0F, std::nullopt, today).usual);
    EXPECT_TRUE(StandingOf(105.0F, std::nullopt, today).usual);
    EXPECT_FALSE(StandingOf(89.9F, std::nullopt, today).usual);
    EXPECT_FALSE(StandingOf(105.1F, std::nullopt, today).usual);
}

TEST(HistoryStanding, Another_serial_number_is_another_electrode) {
    fake::Platform platform;
    SetUpRun();
    CalibrationRecord record;
    record.PointCount = 2;
    record.Standard = {10, 100};
    record.CaliData = {-55.3F, -25.7F};
    record.Slope = {29.6F};
    EXPECT_EQ(StandingOf(1, record).text, "") << "no history";
    NotedEntries noted;
    mWinInit::Calibration[1] = record;
    History::NoteCalibration(1, "");
    EXPECT_EQ(StandingOf(1, record).text, "100.1 %, as earlier today");
    mWinInit::ChannelSetup[1].SerialNo = "new";
    EXPECT_EQ(StandingOf(1, record).text, "100.1 %");
}
