#include "settings/SetupEntries.h"

#include "settings/SetupChecks.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using SetupEntries::Day;

TEST(SetupEntries, The_day_of_a_stored_date_is_its_last_eleven_characters) {
    EXPECT_EQ(SetupEntries::DayOf("14:05:33 07.Mar.2003"), (Day{2003, 3, 7}));
    EXPECT_EQ(SetupEntries::DayOf("07.Mar.2003"), (Day{2003, 3, 7}));
    EXPECT_EQ(SetupEntries::DayOf("09:30 29.Feb.2024"), (Day{2024, 2, 29}));
}

TEST(SetupEntries, A_text_that_ends_in_no_day_has_none) {
    for (const char* text : {"", "N/A", "14:05:33", "07.mar.2003", "29.Feb.2023", "00.Mar.2003",
                             "07-Mar-2003", "31.Apr.2003", "0x.Mar.2003", "07.Mar.0000"})
        EXPECT_EQ(SetupEntries::DayOf(text), std::nullopt) << text;
}

TEST(SetupEntries, Another_day_keeps_the_time_and_midnight_is_taken_without_one) {
    EXPECT_EQ(SetupEntries::OnDay("14:05:33 07.Mar.2003", {2024, 12, 24}), "14:05:33 24.Dec.2024");
    EXPECT_EQ(SetupEntries::OnDay("", {2024, 12, 24}), "00:00:00 24.Dec.2024");
}

TEST(SetupEntries, An_absent_date_reads_NA) {
    EXPECT_EQ(SetupEntries::DateCell("14:05:33 07.Mar.2003"), "07.Mar.2003");
    EXPECT_EQ(SetupEntries::DateCell("some day"), "N/A");
}

TEST(SetupEntries, A_channel_without_calibration_has_no_calibration_date) {
    const fake::Platform platform;
    mWinInit::Calibration[1].CalibrationDate = "09:30 24.Dec.2024";
    EXPECT_EQ(SetupEntries::CalibrationDateCell(1), "N/A");
    mWinInit::Calibration[1].PointCount = 2;
    EXPECT_EQ(SetupEntries::CalibrationDateCell(1), "24.Dec.2024");
}

TEST(SetupEntries, A_molar_mass_of_zero_reads_NA) {
    EXPECT_EQ(SetupEntries::MolarMassText(0), "N/A");
    EXPECT_EQ(SetupEntries::MolarMassText(58.44F), "58.44");
}

TEST(SetupEntries, An_electrode_that_the_library_lacks_starts_empty_under_its_name) {
    const fake::Platform platform;
    mWinInit::ChannelSetup[0] = {"Ca", "CA-1", "Ag/AgCl", "R-1", 40.078F, 3};
    mWinInit::Calibration[0].PointCount = 3;
    SetupEntries::ChooseElectrode("K", 0);
    const auto& setup = mWinInit::ChannelSetup[0];
    EXPECT_EQ(setup.Electrode, "K");
    EXPECT_EQ(setup.SerialNo, "");
    EXPECT_EQ(setup.RefSerialNo, "");
    EXPECT_EQ(setup.TempSensor, 0);
    EXPECT_FLOAT_EQ(setup.MolarMass, 39.098F);
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 0);
}

TEST(SetupEntries, An_electrode_of_the_library_comes_back_with_its_own_molar_mass) {
    const fake::Platform platform;
    mWinInit::ChannelSetup[0] = {"Ca", "CA-1", "Ag/AgCl", "R-1", 40.0F, 3};
    mWinInit::SaveCalibrationInfo("Ca", 0);
    SetupEntries::ChooseElectrode("H (pH)", 0);
    EXPECT_EQ(mWinInit::ChannelSetup[0].MolarMass, 0.0F);
    SetupEntries::ChooseElectrode("Ca", 0);
    EXPECT_EQ(mWinInit::ChannelSetup[0].SerialNo, "CA-1");
    EXPECT_EQ(mWinInit::ChannelSetup[0].MolarMass, 40.0F);
    EXPECT_EQ(mWinInit::ChannelSetup[0].TempSensor, 3);
}

TEST(SetupChecks, An_averaging_number_is_a_whole_number_from_1_to_1000) {
    EXPECT_EQ(SetupChecks::Averaging(" 12 "), 12);
    EXPECT_EQ(SetupChecks::Averaging("1"), 1);
    EXPECT_EQ(SetupChecks::Averaging("1000"), 1000);
    for (const char* text : {"", "0", "1001", "2.5", "0,5", "abc", "5x", "-1", "99999"})
        EXPECT_EQ(SetupChecks::Averaging(text), std::nullopt) << text;
}

TEST(SetupChecks, A_molar_mass_is_a_number_or_does_not_apply) {
    EXPECT_EQ(SetupChecks::MolarMass("58.44"), 58.44F);
    EXPECT_EQ(SetupChecks::MolarMass(" n/a "), 0.0F);
    EXPECT_EQ(SetupChecks::MolarMass(""), 0.0F);
    for (const char* text : {"58,44", "-1", "heavy", "1e99"})
        EXPECT_EQ(SetupChecks::MolarMass(text), std::nullopt) << text;
}

TEST(SetupChecks, Two_channels_of_the_mode_with_one_electrode_are_a_pair) {
    const fake::Platform platform;
    auto& setup = mWinInit::ChannelSetup;
    setup[0].Electrode = "Ca";
    setup[1].Electrode = setup[2].Electrode = "None";
    setup[3].Electrode = "K";
    setup[4].Electrode = "Ca";
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair()) << "channel 5 is not in use";
    setup[3].Electrode = "Ca";
    EXPECT_TRUE(SetupChecks::HasSimultaneousPair());
    setup[0].Electrode = setup[3].Electrode = "Redox mV";
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair()) << "mV electrodes are not calibrated together";
}

TEST(SetupChecks, Unused_channels_with_empty_names_are_no_pair) {
    const fake::Platform platform;
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair());
}
