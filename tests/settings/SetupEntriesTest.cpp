#include "settings/SetupEntries.h"

#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using SetupEntries::Day;

TEST(SetupEntries, The_day_of_a_stored_date_is_its_last_eleven_characters) {
    EXPECT_EQ(SetupEntries::DayOf("14:05:33 07.Mar.2003"), (Day{2003, 3, 7}));
    EXPECT_EQ(SetupEntries::DayOf("07.Mar.2003"), (Day{2003, 3, 7}));
    EXPECT_EQ(SetupEntries::DayOf("09:30 29.Feb.2024"), (Day{2024, 2, 29}));
    EXPECT_EQ(SetupEntries::DayOf("01.Jan.0001"), (Day{1, 1, 1}));
    EXPECT_EQ(SetupEntries::DayOf("19.Sep.2090"), (Day{2090, 9, 19}));
}

TEST(SetupEntries, A_leap_day_is_in_each_fourth_year_but_three_of_four_centuries) {
    for (const char* year : {"1996", "2000", "2004", "2400"})
        EXPECT_TRUE(SetupEntries::DayOf(std::string("29.Feb.") + year)) << year;
    for (const char* year : {"1900", "2001", "2002", "2003", "2100", "2200", "2300"})
        EXPECT_FALSE(SetupEntries::DayOf(std::string("29.Feb.") + year)) << year;
    EXPECT_FALSE(SetupEntries::DayOf("30.Feb.2000"));
    EXPECT_TRUE(SetupEntries::DayOf("31.Jan.2000"));
    EXPECT_FALSE(SetupEntries::DayOf("32.Jan.2000"));
    EXPECT_TRUE(SetupEntries::DayOf("30.Apr.2000"));
}

TEST(SetupEntries, A_text_that_ends_in_no_day_has_none) {
    for (const char* text :
         {"", "N/A", "14:05:33", "07.mar.2003", "29.Feb.2023", "00.Mar.2003", "07-Mar-2003",
          "31.Apr.2003", "0x.Mar.2003", "07.Mar.0000", "07-Mar.2003", "07.Mar-2003", "0:.Mar.2003",
          "0/.Mar.2003", "07.Mar.20x3", "3/.Mar.2003", "07.Mar.200/"})
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
    mWinInit::Calibration[1].PointCount = 1;
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
