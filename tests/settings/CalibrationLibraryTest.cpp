#include "settings/SettingsLines.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using mWinInit::Calibration;
using mWinInit::ChannelSetup;

const std::string library = "All Calibration Info";
const std::string date = "10:12:40 07.Mar.2003";

class CalibrationLibrary : public testing::Test {
protected:
    std::string Stored(const std::string& key) {
        return platform.profile->GetString(library, key, "missing", 1000);
    }
    void Calibrate(std::size_t channel, const std::string& electrode, float standard) {
        ChannelSetup[channel] = {electrode, "S-1", "Ag/AgCl", "R-2", 0, 1};
        Calibration[channel] = {};
        Calibration[channel].CalibrationDate = date;
        Calibration[channel].PointCount = 2;
        Calibration[channel].Standard = {standard, 7};
        Calibration[channel].CaliData = {177.5F, 0};
        EXPECT_TRUE(mWinInit::SaveCalibrationInfo(electrode, channel).empty());
    }

    fake::Platform platform;
};

TEST_F(CalibrationLibrary, An_entry_stands_under_the_channels_number_and_the_electrodes_name) {
    Calibrate(0, "H (pH)", 4);
    EXPECT_EQ(Stored("Chan1_Cali_H (pH)"), Line({date, "2", "0", "4;177.5", "7;0"}));
    EXPECT_EQ(Stored("Chan1_Electrodes_H (pH)"),
              Line({"H (pH)", "S-1", "Ag/AgCl", "R-2", "N/A", "1"}));
}

TEST_F(CalibrationLibrary, Choosing_an_electrode_brings_its_calibration_and_slopes_back) {
    Calibrate(0, "H (pH)", 4);
    mWinInit::Reset();
    mWinInit::LoadCalibrationInfo("H (pH)", 0);
    EXPECT_EQ(ChannelSetup[0].Electrode, "H (pH)");
    EXPECT_EQ(ChannelSetup[0].SerialNo, "S-1");
    EXPECT_EQ(ChannelSetup[0].TempSensor, 1);
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].CalibrationDate, date);
    EXPECT_EQ(Calibration[0].Slope[0], -59.2F);
}

TEST_F(CalibrationLibrary, An_electrode_never_calibrated_on_the_channel_is_not_calibrated) {
    Calibrate(0, "Ca", 4);
    mWinInit::LoadCalibrationInfo("NO3", 0);
    EXPECT_EQ(Calibration[0].PointCount, 0);
    EXPECT_EQ(Calibration[0].StdUnit, 0);
    EXPECT_EQ(ChannelSetup[0].Electrode, "None");
    EXPECT_EQ(ChannelSetup[0].SerialNo, "");
    EXPECT_EQ(ChannelSetup[0].RefType, "None");
    EXPECT_EQ(ChannelSetup[0].TempSensor, 0);
}

TEST_F(CalibrationLibrary, The_same_electrode_on_two_channels_has_two_entries) {
    Calibrate(0, "Ca", 4);
    Calibrate(1, "Ca", 5);
    mWinInit::Reset();
    mWinInit::LoadCalibrationInfo("Ca", 0);
    mWinInit::LoadCalibrationInfo("Ca", 1);
    EXPECT_EQ(Calibration[0].Standard[0], 4);
    EXPECT_EQ(Calibration[1].Standard[0], 5);
}

TEST_F(CalibrationLibrary, A_newer_calibration_replaces_the_older) {
    Calibrate(0, "Ca", 4);
    Calibrate(0, "Ca", 5);
    mWinInit::LoadCalibrationInfo("Ca", 0);
    EXPECT_EQ(Calibration[0].Standard[0], 5);
}

TEST_F(CalibrationLibrary, Without_points_the_stored_calibration_stays) {
    Calibrate(0, "Ca", 4);
    Calibration[0].PointCount = 0;
    ChannelSetup[0].SerialNo = "S-9";
    mWinInit::SaveCalibrationInfo("Ca", 0);
    EXPECT_EQ(Stored("Chan1_Cali_Ca"), Line({date, "2", "0", "4;177.5", "7;0"}));
    EXPECT_EQ(Stored("Chan1_Electrodes_Ca"), Line({"Ca", "S-9", "Ag/AgCl", "R-2", "N/A", "1"}));
}

TEST_F(CalibrationLibrary, A_single_point_of_the_file_is_written_as_it_was) {
    platform.profile->Write(library, "Chan1_Cali_Ca", Line({date, "1", "0", "4;177.5"}));
    mWinInit::LoadCalibrationInfo("Ca", 0);
    mWinInit::SaveCalibrationInfo("Cl", 0);
    EXPECT_EQ(Stored("Chan1_Cali_Cl"), Line({date, "1", "0", "4;177.5"}));
}

TEST_F(CalibrationLibrary, Names_that_do_not_fit_come_back_as_their_beginning) {
    const std::string name(60, 's');
    ChannelSetup[0] = {"Ca", name, name, "12345", 0, 1};
    EXPECT_EQ(mWinInit::SaveCalibrationInfo("Ca", 0).size(), 1U);
    mWinInit::LoadCalibrationInfo("Ca", 0);
    EXPECT_EQ(ChannelSetup[0].RefType, name);
    EXPECT_EQ(ChannelSetup[0].RefSerialNo, "1234"); // characters 126 to 129 of the line
}

TEST_F(CalibrationLibrary, Without_an_electrode_no_electrode_entry_is_written) {
    ChannelSetup[0] = {};
    Calibration[0].PointCount = 0;
    mWinInit::SaveCalibrationInfo("Ca", 0);
    EXPECT_EQ(Stored("Chan1_Electrodes_Ca"), "missing");
    EXPECT_EQ(Stored("Chan1_Cali_Ca"), "missing");
}

TEST_F(CalibrationLibrary, Points_that_do_not_fit_are_said) {
    ChannelSetup[7].Electrode = "Ca";
    Calibration[7].CalibrationDate = date;
    Calibration[7].PointCount = 6;
    Calibration[7].Standard.fill(1.234567E-05F);
    Calibration[7].CaliData.fill(-1.234567E-05F);
    EXPECT_EQ(mWinInit::SaveCalibrationInfo("Ca", 7),
              std::vector<std::string>{"Channel 8: calibration points 4 to 6 do not fit into the "
                                       "settings file and will not come back."});
    mWinInit::LoadCalibrationInfo("Ca", 7);
    EXPECT_EQ(Calibration[7].PointCount, 3); // 24 characters in front, 27 a point
}

} // namespace
