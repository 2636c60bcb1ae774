#include "base/CodePage.h"
#include "settings/SettingsLines.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using mWinInit::Calibration;
using mWinInit::ChannelSetup;
using mWinInit::HardwareSettings;
using mWinInit::ProjectInfo;
using mWinInit::TempSensor;

class LoadSettingsTest : public testing::Test {
protected:
    void Store(const std::string& section, const std::string& key, const std::string& value) {
        ASSERT_TRUE(platform.profile->Write(section, key, value));
    }
    std::string Stored(const std::string& section, const std::string& key) {
        return platform.profile->GetString(section, key, "missing", 1000);
    }
    std::string DefaultFolder() {
        return CodePage::FromPath(platform.places.DataParentFolder() / "Data").value();
    }

    fake::Platform platform;
};

TEST_F(LoadSettingsTest, Reset_leaves_nothing_of_what_was_set_up) {
    ProjectInfo.ProjectName = "Well 7";
    HardwareSettings.HardwarePortNumber = 3;
    ChannelSetup[1].Electrode = "Ca";
    Calibration[2].PointCount = 2;
    TempSensor[0].PointCount = 2;
    mWinInit::WindowX = mWinInit::WindowY = 7;

    mWinInit::Reset(8);

    EXPECT_EQ(ProjectInfo.ProjectName, "");
    EXPECT_EQ(HardwareSettings.HardwarePortNumber, 2);
    EXPECT_EQ(HardwareSettings.ChannelCount, 8);
    EXPECT_EQ(ChannelSetup[1].Electrode, "");
    EXPECT_EQ(Calibration[2].PointCount, 0);
    EXPECT_EQ(TempSensor[0].PointCount, 0);
    EXPECT_EQ(mWinInit::WindowX, 0);
    EXPECT_EQ(mWinInit::WindowY, 0);
}

TEST_F(LoadSettingsTest, The_channels_in_use_are_as_many_as_the_tables_hold) {
    const std::pair<int, std::size_t> cases[] = {{-1, 0}, {0, 0}, {1, 1}, {8, 8}, {9, 8}};
    for (const auto& [count, inUse] : cases) {
        mWinInit::Reset(count);
        EXPECT_EQ(mWinInit::ChannelsInUse(), inUse) << count;
    }
}

TEST_F(LoadSettingsTest, The_conversion_is_handed_the_electrode_of_every_channel) {
    for (std::size_t i = 0; i < maxChannels; ++i)
        ChannelSetup[i].Electrode = "electrode " + std::to_string(i + 1);
    const auto tables = mWinInit::ConversionTables();
    for (std::size_t i = 0; i < maxChannels; ++i)
        EXPECT_EQ(tables.electrode[i], "electrode " + std::to_string(i + 1));
}

TEST_F(LoadSettingsTest, Without_a_file_every_text_and_number_has_its_default) {
    mWinInit::LoadSettings();
    EXPECT_EQ(ProjectInfo.ProjectName, "< Please type the name of this project >");
    EXPECT_EQ(ProjectInfo.ExperimentDate, "14:05:33 07.Mar.2003"); // the clock's moment
    EXPECT_EQ(ProjectInfo.Experimentator, "< Please type the name of analyst >");
    EXPECT_EQ(ProjectInfo.MeasurementFileLocation, DefaultFolder());
    EXPECT_EQ(HardwareSettings.HardwarePortNumber, 2);
    EXPECT_EQ(HardwareSettings.AveragingForCalibration, 2);
    EXPECT_EQ(HardwareSettings.AveragingForMeasurement, 2);
    EXPECT_EQ(HardwareSettings.ChannelCount, 4);
    EXPECT_EQ(mWinInit::WindowX, 0);
    EXPECT_EQ(mWinInit::WindowY, 0);
}

TEST_F(LoadSettingsTest, Without_a_file_every_channel_is_unused_and_not_calibrated) {
    mWinInit::LoadSettings();
    for (std::size_t channel = 0; channel < 4; ++channel) {
        EXPECT_EQ(ChannelSetup[channel].Electrode, "None");
        EXPECT_EQ(ChannelSetup[channel].SerialNo, "");
        EXPECT_EQ(ChannelSetup[channel].RefType, "None");
        EXPECT_EQ(ChannelSetup[channel].RefSerialNo, "");
        EXPECT_EQ(ChannelSetup[channel].MolarMass, 0);
        EXPECT_EQ(ChannelSetup[channel].TempSensor, 0);
        EXPECT_EQ(Calibration[channel], CalibrationRecord{});
    }
}

TEST_F(LoadSettingsTest, An_empty_text_means_its_default_but_an_empty_date_stays_empty) {
    for (const char* key :
         {"Project Name", "Experiment Date", "Experimentator", "Measurement File Location"})
        Store("Project Info", key, "");
    mWinInit::LoadSettings();
    EXPECT_EQ(ProjectInfo.ProjectName, mWinInit::projectPlaceholder);
    EXPECT_EQ(ProjectInfo.ExperimentDate, "");
    EXPECT_EQ(ProjectInfo.Experimentator, mWinInit::analystPlaceholder);
    EXPECT_EQ(ProjectInfo.MeasurementFileLocation, DefaultFolder());
}

TEST_F(LoadSettingsTest, Stored_texts_and_numbers_are_taken) {
    Store("Project Info", "Project Name", "River \xE9tude");
    Store("Hardware", "Port Number", "11");
    Store("Hardware", "Averaging Number For Calibration", "5");
    Store("Hardware", "Averaging Number For Measurement", "1000");
    Store("Window Status", "X", "-12");
    Store("Window Status", "Y", "40");
    mWinInit::LoadSettings();
    EXPECT_EQ(ProjectInfo.ProjectName, "River \xE9tude");
    EXPECT_EQ(HardwareSettings.HardwarePortNumber, 11);
    EXPECT_EQ(HardwareSettings.AveragingForCalibration, 5);
    EXPECT_EQ(HardwareSettings.AveragingForMeasurement, 1000);
    EXPECT_EQ(mWinInit::WindowX, -12);
    EXPECT_EQ(mWinInit::WindowY, 40);
}

TEST_F(LoadSettingsTest, A_number_beyond_16_bits_stops_at_the_limit) {
    Store("Window Status", "X", "70000");
    Store("Window Status", "Y", "-70000");
    mWinInit::LoadSettings();
    EXPECT_EQ(mWinInit::WindowX, 32767);
    EXPECT_EQ(mWinInit::WindowY, -32768);
}

TEST_F(LoadSettingsTest, A_project_name_of_200_characters_comes_back_as_its_first_129) {
    Store("Project Info", "Project Name", std::string(200, 'x'));
    mWinInit::LoadSettings();
    EXPECT_EQ(ProjectInfo.ProjectName, std::string(129, 'x'));
}

TEST_F(LoadSettingsTest, A_channel_line_fills_the_setup) {
    Store("Electrodes Info", "Channel Two", Line({"Ca", "S-1", "Ag/AgCl", "R-2", "40.08", "3"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[1].Electrode, "Ca");
    EXPECT_EQ(ChannelSetup[1].SerialNo, "S-1");
    EXPECT_EQ(ChannelSetup[1].RefType, "Ag/AgCl");
    EXPECT_EQ(ChannelSetup[1].RefSerialNo, "R-2");
    EXPECT_EQ(ChannelSetup[1].MolarMass, 40.08F);
    EXPECT_EQ(ChannelSetup[1].TempSensor, 3);
}

TEST_F(LoadSettingsTest, A_molar_mass_that_the_cut_fell_into_is_not_taken_by_half) {
    const std::string names = Line({"Ca", std::string(60, 's'), std::string(60, 'r'), "R"});
    ASSERT_EQ(names.size(), 126U);
    Store("Electrodes Info", "Channel One", names + "\x0F" + "140.12\x0F" + "3");
    Store("Electrodes Info", "Channel Two", names + "\x0F" + "40\x0F" + "3");
    Store("Electrodes Info", "Channel Three", names + "\x0F" + "40");
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[0].RefSerialNo, "R");
    EXPECT_EQ(ChannelSetup[0].MolarMass, 0) << "14 of 140.12";
    EXPECT_EQ(ChannelSetup[1].MolarMass, 40) << "it ends at the 129th character";
    EXPECT_EQ(ChannelSetup[2].MolarMass, 40);
}

TEST_F(LoadSettingsTest, A_channel_line_of_three_fields_leaves_the_rest_empty_and_0) {
    ChannelSetup[0].MolarMass = 5;
    Store("Electrodes Info", "Channel One", Line({"Ca", "S-1", "Ag/AgCl"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[0].RefType, "Ag/AgCl");
    EXPECT_EQ(ChannelSetup[0].RefSerialNo, "");
    EXPECT_EQ(ChannelSetup[0].MolarMass, 0);
    EXPECT_EQ(ChannelSetup[0].TempSensor, 0);
}

TEST_F(LoadSettingsTest, An_empty_channel_line_keeps_the_molar_mass) {
    ChannelSetup[0].MolarMass = 5;
    Store("Electrodes Info", "Channel One", "");
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[0].Electrode, "None");
    EXPECT_EQ(ChannelSetup[0].MolarMass, 5);
}

TEST_F(LoadSettingsTest, Not_applicable_in_any_case_is_a_molar_mass_of_0) {
    for (const char* text : {"N/A", "n/a", "n/A", "N/a"}) {
        ChannelSetup[0].MolarMass = 5;
        Store("Electrodes Info", "Channel One", Line({"Redox", "", "", "", text, "0"}));
        mWinInit::LoadSettings();
        EXPECT_EQ(ChannelSetup[0].MolarMass, 0) << text;
    }
}

TEST_F(LoadSettingsTest, The_number_of_the_temperature_sensor_is_rounded_with_ties_to_even) {
    const std::pair<const char*, int> cases[] = {
        {"0.5", 0}, {"1.5", 2}, {"2.5", 2}, {"2.51", 3}, {"x", 0}, {"-1", -1}, {"4 (bath)", 4}};
    for (const auto& [text, sensor] : cases) {
        Store("Electrodes Info", "Channel One", Line({"Ca", "", "", "", "40.08", text}));
        mWinInit::LoadSettings();
        EXPECT_EQ(ChannelSetup[0].TempSensor, sensor) << text;
    }
}

TEST_F(LoadSettingsTest, A_calibration_line_fills_the_record_and_its_slope) {
    Store("Electrodes Info", "Channel One", Line({"Ca", "", "", "", "40.08", "0"}));
    Store("Calibration Info", "Channel One",
          Line({"10:12:40 07.Mar.2003", "2", "0", "10;-55.3", "100;2.1"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].CalibrationDate, "10:12:40 07.Mar.2003");
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].StdUnit, 0);
    EXPECT_EQ(Calibration[0].Standard[1], 100);
    EXPECT_EQ(Calibration[0].CaliData[0], -55.3F);
    EXPECT_EQ(Calibration[0].Slope[0], 57.4F); // 57.4 mV over one decade
}

TEST_F(LoadSettingsTest, The_slope_of_a_pH_channel_is_taken_on_the_linear_scale) {
    Store("Electrodes Info", "Channel One", Line({"H (pH)", "", "", "", "N/A", "0"}));
    Store("Calibration Info", "Channel One",
          Line({"10:12:40 07.Mar.2003", "2", "0", "4;177.5", "7;0"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].Slope[0], -59.2F); // -177.5 mV over 3 pH is -59.17, as displayed
}

TEST_F(LoadSettingsTest, Points_that_allow_no_slope_leave_it_0) {
    Store("Calibration Info", "Channel One", Line({"", "2", "0", "0;-55.3", "100;2.1"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].Slope[0], 0);
}

TEST_F(LoadSettingsTest, An_empty_calibration_line_means_not_calibrated_and_nothing_else) {
    Calibration[0].CalibrationDate = "before";
    Calibration[0].PointCount = 3;
    Calibration[0].StdUnit = 1;
    Calibration[0].Standard[0] = 5;
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 0);
    EXPECT_EQ(Calibration[0].StdUnit, 0);
    EXPECT_EQ(Calibration[0].CalibrationDate, "before");
    EXPECT_EQ(Calibration[0].Standard[0], 5);
}

TEST_F(LoadSettingsTest, A_count_below_1_takes_no_points) {
    Store("Calibration Info", "Channel One", Line({"10:12:40 07.Mar.2003", "0.5", "1", "10;1"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].CalibrationDate, "10:12:40 07.Mar.2003");
    EXPECT_EQ(Calibration[0].PointCount, 0);
    EXPECT_EQ(Calibration[0].StdUnit, 1);
    EXPECT_EQ(Calibration[0].Standard[0], 0);
}

TEST_F(LoadSettingsTest, A_count_above_6_becomes_6) {
    Store("Calibration Info", "Channel One",
          Line({"", "9", "0", "1;1", "2;2", "3;3", "4;4", "5;5", "6;6", "7;7", "8;8", "9;9"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 6);
    EXPECT_EQ(Calibration[0].Standard[5], 6);
    EXPECT_EQ(Calibration[0].CaliData[5], 6);
}

TEST_F(LoadSettingsTest, A_malformed_line_gives_empty_texts_and_zeros) {
    Store("Electrodes Info", "Channel One",
          "\x0F\x0F\x0F\x0F"
          "heavy\x0F"
          "first");
    Store("Calibration Info", "Channel One", Line({"date", "2", "ppm", "ten;x", "100"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[0].Electrode, "");
    EXPECT_EQ(ChannelSetup[0].MolarMass, 0);
    EXPECT_EQ(ChannelSetup[0].TempSensor, 0);
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].Standard[0], 0);
    EXPECT_EQ(Calibration[0].Standard[1], 100);
    EXPECT_EQ(Calibration[0].CaliData[1], 100); // without a semicolon both parts are the field
}

// No box takes a semicolon; a file that was written by hand may hold one.
TEST_F(LoadSettingsTest, Of_a_field_with_a_semicolon_that_is_no_pair_the_text_before_it_counts) {
    Store("Electrodes Info", "Channel One",
          Line({"Ca;K", "S-1;old", "Ag/AgCl;x", "R-2;y", "40.078;1", "3;2"}));
    Store("Calibration Info", "Channel One", Line({"date;2", "2;3", "1;0", "10;1", "100;2"}));
    Store("Temperature Sensor Calibration Matrix", "Temp Sensor One",
          Line({"2;3", "80;205.5", "70;271.9", "60;355.9"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[0].Electrode, "Ca");
    EXPECT_EQ(ChannelSetup[0].SerialNo, "S-1");
    EXPECT_EQ(ChannelSetup[0].RefType, "Ag/AgCl");
    EXPECT_EQ(ChannelSetup[0].RefSerialNo, "R-2");
    EXPECT_EQ(ChannelSetup[0].MolarMass, 40.078F);
    EXPECT_EQ(ChannelSetup[0].TempSensor, 3);
    EXPECT_EQ(Calibration[0].CalibrationDate, "date");
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].StdUnit, 1);
    EXPECT_EQ(TempSensor[0].PointCount, 2);
}

/// A line of 6 points; each pair takes 20 characters with its separator.
const std::string longCalibration = Line(
    {"10:12:40 07.Mar.2003", "6", "0", "1000.001;-100.00001", "2000.001;-100.00002",
     "3000.001;-100.00003", "4000.001;-100.00004", "5000.001;-100.00005", "6000.001;-100.00006"});

TEST_F(LoadSettingsTest, Of_a_line_that_was_cut_at_129_characters_only_the_whole_points_count) {
    ASSERT_EQ(longCalibration.size(), 144U); // the fifth point ends at 124
    Store("Calibration Info", "Channel One", longCalibration);
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 5);
    EXPECT_EQ(Calibration[0].Standard[4], 5000.001F);
    EXPECT_EQ(Calibration[0].Standard[5], 0);
}

TEST_F(LoadSettingsTest, A_point_that_ends_at_the_129th_character_is_whole) {
    const std::string points = longCalibration.substr(longCalibration.find("1000.001"));
    const std::string line = std::string(25, 'd') +
                             "\x0F"
                             "6\x0F"
                             "0\x0F" +
                             points;
    ASSERT_EQ(line[129], '\x0F'); // behind the fifth point
    Store("Calibration Info", "Channel One", line);
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 5);
    EXPECT_EQ(Calibration[0].Standard[4], 5000.001F);
}

TEST_F(LoadSettingsTest, A_line_of_129_characters_is_whole) {
    const std::string line = longCalibration.substr(0, 125) + "1;22";
    ASSERT_EQ(line.size(), 129U);
    Store("Calibration Info", "Channel One", line);
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 6);
    EXPECT_EQ(Calibration[0].CaliData[5], 22);
}

TEST_F(LoadSettingsTest, A_point_that_ends_at_the_130th_character_does_not_count) {
    const std::string line = longCalibration.substr(0, 125) + "1;234\x0F" + "7;8";
    ASSERT_EQ(line[130], '\x0F');
    Store("Calibration Info", "Channel One", line);
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 5);
}

TEST_F(LoadSettingsTest, A_line_that_was_cut_before_its_points_gives_none) {
    Store("Calibration Info", "Channel One",
          Line({std::string(100, 'd'), "2", std::string(40, '1'), "10;1", "100;2"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].CalibrationDate, std::string(100, 'd'));
    EXPECT_EQ(Calibration[0].PointCount, 0);
}

TEST_F(LoadSettingsTest, Of_a_line_that_is_one_long_field_129_characters_come_back) {
    Store("Calibration Info", "Channel One", std::string(200, 'd'));
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].CalibrationDate, std::string(129, 'd'));
    EXPECT_EQ(Calibration[0].PointCount, 0);
}

TEST_F(LoadSettingsTest, A_line_that_is_too_long_for_what_it_claims_keeps_its_claim) {
    const std::string points = longCalibration.substr(longCalibration.find("\x0F"
                                                                           "1000.001"));
    for (const char* claim : {"2", "2;9"}) {
        Store("Calibration Info", "Channel One",
              Line({"10:12:40 07.Mar.2003", claim, "0"}) + points);
        mWinInit::LoadSettings();
        EXPECT_EQ(Calibration[0].PointCount, 2) << claim;
    }
}

TEST_F(LoadSettingsTest, Channels_beyond_the_channel_count_are_not_read) {
    Store("Electrodes Info", "Channel Five", Line({"Ca", "S-5"}));
    Store("Calibration Info", "Channel Eight", Line({"date", "2", "0", "1;1", "2;2"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[4].Electrode, "");
    EXPECT_EQ(Calibration[7].PointCount, 0);
    mWinInit::Reset(8);
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[4].Electrode, "Ca");
    EXPECT_EQ(Calibration[7].PointCount, 2);
}

const std::string sensorSection = "Temperature Sensor Calibration Matrix";
const std::string defaultSensorLine =
    Line({"10", "80;205.5", "70;271.9", "60;355.9", "50;456.9", "40;570.8", "30;688.7", "25;745.8",
          "20;799.6", "10;894", "0;966.8"});

TEST_F(LoadSettingsTest, A_fresh_file_gains_the_default_table_of_each_sensor) {
    mWinInit::LoadSettings();
    for (const char* key :
         {"Temp Sensor One", "Temp Sensor Two", "Temp Sensor Three", "Temp Sensor Four"})
        EXPECT_EQ(Stored(sensorSection, key), defaultSensorLine);
    for (const auto& sensor : TempSensor) {
        EXPECT_EQ(sensor.PointCount, 10);
        EXPECT_EQ(sensor.Temperature[0], 80);
        EXPECT_EQ(sensor.Reading[0], 205.5F);
        EXPECT_EQ(sensor.Temperature[9], 0);
        EXPECT_EQ(sensor.Reading[9], 966.8F);
        EXPECT_EQ(sensor.Temperature[10], 0);
        EXPECT_EQ(sensor.Reading[10], 0);
    }
}

TEST_F(LoadSettingsTest, A_sensor_table_in_descending_order_is_used_in_ascending_order) {
    Store(sensorSection, "Temp Sensor Two", Line({"3", "0;900", "25;700", "50;400"}));
    mWinInit::LoadSettings();
    EXPECT_EQ(TempSensor[1].PointCount, 3);
    EXPECT_EQ(TempSensor[1].Reading[0], 400);
    EXPECT_EQ(TempSensor[1].Temperature[0], 50);
    EXPECT_EQ(TempSensor[1].Reading[2], 900);
    EXPECT_EQ(TempSensor[1].Temperature[2], 0);
    EXPECT_EQ(Stored(sensorSection, "Temp Sensor Two"), Line({"3", "0;900", "25;700", "50;400"}));
}

TEST_F(LoadSettingsTest, A_sensor_line_that_claims_more_than_16_rows_fills_16) {
    std::string line = "20";
    for (int row = 1; row <= 20; ++row)
        line += "\x0F" + std::to_string(row) + ";" + std::to_string(row);
    ASSERT_LE(line.size(), 129U);
    mWinInit::LoadTempSensorMatrix(0, line);
    EXPECT_EQ(TempSensor[0].PointCount, 16);
    EXPECT_EQ(TempSensor[0].Reading[15], 16);
}

TEST_F(LoadSettingsTest, A_sensor_line_without_a_count_gives_no_table) {
    mWinInit::LoadTempSensorMatrix(2, Line({"none", "80;205.5"}));
    EXPECT_EQ(TempSensor[2].PointCount, 0);
}

TEST_F(LoadSettingsTest, Of_a_sensor_line_that_was_cut_only_the_whole_rows_count) {
    std::string line = "16";
    for (int row = 0; row < 16; ++row)
        line += "\x0F" + std::to_string(80 - row) + ";" + std::to_string(200 + row) + ".5";
    ASSERT_EQ(line.size(), 2U + 16 * 9);
    Store(sensorSection, "Temp Sensor One", line);
    mWinInit::LoadSettings();
    EXPECT_EQ(TempSensor[0].PointCount, 14); // 2 + 14 * 9 = 128 characters
    EXPECT_EQ(TempSensor[0].Reading[0], 200.5F);
    EXPECT_EQ(TempSensor[0].Reading[13], 213.5F);
}

} // namespace
