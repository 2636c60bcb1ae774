#include "history/CalibrationEntry.h"
#include "screens/calib/SingleCalibration.h"
#include "settings/mWinInit.h"
#include "support/NotedEntries.h"

namespace {

class HistoryOfCalibration : public SingleCalibration {
protected:
    void Calibrate() {
        Open(firstCa);
        RecordPoint(0, "1", 100);
        RecordPoint(1, "10", 129);
        Click(*form, "cmdSys", frmCalib::mainButton);
    }

    NotedEntries noted;
};

TEST_F(HistoryOfCalibration,
       A_stored_calibration_is_taken_down_with_the_temperature_of_its_reading) {
    mWinInit::ChannelSetup[firstCa].SerialNo = "A12";
    mWinInit::ChannelSetup[firstCa].TempSensor = 1;
    mWinInit::TempSensor[0] = {2, {20, 30}, {0, 2000}};
    Calibrate();
    EXPECT_TRUE(noted.All().empty()) << "before it is stored";
    form->close();
    const auto entries = noted.All();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].kind, History::Kind::calibration);
    const auto past = History::CalibrationOf(entries[0]);
    EXPECT_EQ(past.electrode, "Ca");
    EXPECT_EQ(past.serialNo, "A12");
    EXPECT_EQ(past.channel, firstCa);
    EXPECT_EQ(past.points, "1 100; 10 129");
    EXPECT_EQ(past.slopes, "29.0");
    EXPECT_NE(past.temperature_celsius, "");
}

TEST_F(HistoryOfCalibration, The_summary_tells_how_it_stands_against_the_last_one) {
    Calibrate();
    auto& standing = Find<QLabel>(*form, "lblStanding");
    EXPECT_EQ(standing.text(), "Slope of theory: 98.0 %");
    EXPECT_TRUE(standing.isVisible());
    EXPECT_FALSE(standing.font().bold());
    form->close();
    platform.clock.now.day += 3;
    Stored(firstCa) = {};
    Open(firstCa);
    RecordPoint(0, "1", 100);
    RecordPoint(1, "10", 125);
    Click(*form, "cmdSys", frmCalib::mainButton);
    auto& second = Find<QLabel>(*form, "lblStanding");
    EXPECT_EQ(second.text(), "Slope of theory: 84.5 %, 13.5 % less than 3 days ago");
    EXPECT_TRUE(second.font().bold()) << "outside the bounds, and not by colour alone";
    form->close();
}

TEST_F(HistoryOfCalibration, A_calibration_that_is_given_up_is_none) {
    Open(firstCa);
    RecordPoint(0, "1", 100);
    GiveUp();
    EXPECT_TRUE(noted.All().empty());
}

} // namespace
