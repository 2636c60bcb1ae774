#include "settings/CalibrationAge.h"

#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using mWinInit::AgePassed_hours;
using mWinInit::CalibrationAges;

namespace {

class CalibrationAge : public testing::Test {
protected:
    CalibrationAge() {
        mWinInit::ChannelSetup[0].Electrode = "H (pH)";
        mWinInit::Calibration[0].PointCount = 2;
        mWinInit::Calibration[0].CalibrationDate = "14:05 07.Mar.2003";
    }

    fake::Platform platform;
};

} // namespace

TEST_F(CalibrationAge, The_limits_are_never_at_first_and_come_back_as_they_were_kept) {
    EXPECT_EQ(mWinInit::LoadCalibrationAges(), CalibrationAges{});
    const CalibrationAges ages{24, 168, 9999};
    EXPECT_TRUE(mWinInit::SaveCalibrationAges(ages).empty());
    EXPECT_EQ(mWinInit::LoadCalibrationAges(), ages);
    WriteBytes(platform.SettingsFile(), "[Calibration Age]\r\npH Hours=-3\r\nIon Hours=x\r\n"
                                        "Redox Hours=10000\r\n");
    EXPECT_EQ(mWinInit::LoadCalibrationAges(), CalibrationAges{});
}

TEST_F(CalibrationAge, A_calibration_has_passed_its_limit_when_it_is_older_by_a_minute) {
    const CalibrationAges ages{24, 0, 0};
    EXPECT_EQ(AgePassed_hours(0, ages, {2003, 3, 8, 14, 5, 59}), std::nullopt);
    EXPECT_EQ(AgePassed_hours(0, ages, {2003, 3, 8, 14, 6, 0}), 24);
    mWinInit::Calibration[0].CalibrationDate = "14:05:33 07.Mar.2003";
    EXPECT_EQ(AgePassed_hours(0, ages, {2003, 3, 8, 14, 6, 0}), 24);
    EXPECT_EQ(AgePassed_hours(0, ages, {2004, 1, 1, 0, 0, 0}), 24);
}

TEST_F(CalibrationAge, Both_digits_of_the_minute_count) {
    mWinInit::Calibration[0].CalibrationDate = "14:35 07.Mar.2003";
    const CalibrationAges ages{24, 0, 0};
    EXPECT_EQ(AgePassed_hours(0, ages, {2003, 3, 8, 14, 35, 59}), std::nullopt);
    EXPECT_EQ(AgePassed_hours(0, ages, {2003, 3, 8, 14, 36, 0}), 24);
}

TEST_F(CalibrationAge, Each_kind_of_electrode_has_a_limit_of_its_own) {
    const LocalTime later{2003, 4, 8, 14, 6, 0};
    EXPECT_EQ(AgePassed_hours(0, {0, 1, 1}, later), std::nullopt);
    mWinInit::ChannelSetup[0].Electrode = "Ca";
    EXPECT_EQ(AgePassed_hours(0, {0, 2, 0}, later), 2);
    mWinInit::ChannelSetup[0].Electrode = "Redox";
    EXPECT_EQ(AgePassed_hours(0, {0, 2, 3}, later), 3);
    mWinInit::ChannelSetup[0].Electrode = "None";
    EXPECT_EQ(AgePassed_hours(0, {1, 2, 3}, later), std::nullopt);
}

TEST_F(CalibrationAge, What_was_never_calibrated_or_has_no_date_is_not_marked) {
    const CalibrationAges ages{1, 1, 1};
    const LocalTime later{2003, 4, 8, 14, 6, 0};
    for (const char* text : {"", "07.Mar.2003", "some day", "14:05 31.Feb.2003", "14:05"}) {
        mWinInit::Calibration[0].CalibrationDate = text;
        EXPECT_EQ(AgePassed_hours(0, ages, later), std::nullopt) << text;
    }
    mWinInit::Calibration[0].CalibrationDate = "14:05 07.Mar.2003";
    mWinInit::Calibration[0].PointCount = 0;
    EXPECT_EQ(AgePassed_hours(0, ages, later), std::nullopt);
    mWinInit::Calibration[0].PointCount = 1;
    EXPECT_EQ(AgePassed_hours(0, ages, later), 1);
    mWinInit::Calibration[0] = {};
    EXPECT_EQ(AgePassed_hours(0, ages, later), std::nullopt);
}
