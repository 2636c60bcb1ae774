#include "settings/SettingsLines.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using mWinInit::Calibration;
using mWinInit::ChannelSetup;
using mWinInit::HardwareSettings;
using mWinInit::ProjectInfo;

using Messages = std::vector<std::string>;

class SaveSettingsTest : public testing::Test {
protected:
    SaveSettingsTest() { mWinInit::LoadSettings(); }

    std::string Stored(const std::string& section, const std::string& key) {
        return platform.profile->GetString(section, key, "missing", 1000);
    }

    fake::Platform platform;
};

CalibrationRecord Calcium() {
    CalibrationRecord record;
    record.CalibrationDate = "10:12:40 07.Mar.2003";
    record.PointCount = 2;
    record.Standard = {10, 100};
    record.CaliData = {-55.3F, 2.1F};
    return record;
}

TEST_F(SaveSettingsTest, A_new_file_holds_every_section_in_the_order_of_writing) {
    std::filesystem::remove(platform.SettingsFile());
    ProjectInfo = {"River", "14:05:33 07.Mar.2003", "A. Analyst", "C:\\Data"};
    HardwareSettings.HardwarePortNumber = 3;
    mWinInit::WindowX = -12;
    mWinInit::WindowY = 40;
    Calibration[0] = Calcium();
    ChannelSetup[0] = {"Ca", "S-1", "Ag/AgCl", "R-2", 40.078F, 3};
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
    const std::string none = Line({"None", "", "None", "", "N/A", "0"});
    EXPECT_EQ(ReadBytes(platform.SettingsFile()),
              "[Project Info]\r\nProject Name=River\r\nExperiment Date=14:05:33 07.Mar.2003\r\n"
              "Experimentator=A. Analyst\r\nMeasurement File Location=C:\\Data\r\n"
              "[Hardware]\r\nPort Number=3\r\nAveraging Number For Calibration=2\r\n"
              "Averaging Number For Measurement=2\r\n"
              "[Window Status]\r\nX=-12\r\nY=40\r\n"
              "[Calibration Info]\r\nChannel One=" +
                  Line({"10:12:40 07.Mar.2003", "2", "0", "10;-55.3", "100;2.1"}) +
                  "\r\nChannel Two=\r\nChannel Three=\r\nChannel Four=\r\n"
                  "[Electrodes Info]\r\nChannel One=" +
                  Line({"Ca", "S-1", "Ag/AgCl", "R-2", "40.078", "3"}) + "\r\nChannel Two=" + none +
                  "\r\nChannel Three=" + none + "\r\nChannel Four=" + none + "\r\n");
}

TEST_F(SaveSettingsTest, What_is_saved_comes_back) {
    ProjectInfo.ProjectName = "\xC9tude 25 \xB0";
    HardwareSettings.AveragingForMeasurement = 1000;
    ChannelSetup[2] = {"NO3", "n 7", "None", "", 62.004F, -1};
    Calibration[2] = Calcium();
    Calibration[2].StdUnit = 1;
    Measure::RestoreSlopes(Calibration[2], false);
    const auto project = ProjectInfo.ProjectName;
    const auto calibration = Calibration[2];
    mWinInit::SaveSettings();
    mWinInit::Reset();
    mWinInit::LoadSettings();
    EXPECT_EQ(ProjectInfo.ProjectName, project);
    EXPECT_EQ(HardwareSettings.AveragingForMeasurement, 1000);
    EXPECT_EQ(ChannelSetup[2].Electrode, "NO3");
    EXPECT_EQ(ChannelSetup[2].SerialNo, "n 7");
    EXPECT_EQ(ChannelSetup[2].MolarMass, 62.004F);
    EXPECT_EQ(ChannelSetup[2].TempSensor, -1);
    EXPECT_EQ(Calibration[2], calibration);
}

TEST_F(SaveSettingsTest, Placeholders_are_written_as_they_stand) {
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Project Info", "Project Name"), mWinInit::projectPlaceholder);
    EXPECT_EQ(Stored("Project Info", "Experimentator"), mWinInit::analystPlaceholder);
}

TEST_F(SaveSettingsTest, A_channel_without_calibration_has_an_empty_value_not_a_missing_key) {
    Calibration[1] = Calcium();
    Calibration[1].PointCount = 0;
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Calibration Info", "Channel Two"), "");
}

TEST_F(SaveSettingsTest, A_lower_case_not_applicable_is_written_back_as_N_A) {
    platform.profile->Write("Electrodes Info", "Channel One",
                            Line({"Redox", "s", "None", "", "n/a", "0"}));
    mWinInit::LoadSettings();
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Electrodes Info", "Channel One"),
              Line({"Redox", "s", "None", "", "N/A", "0"}));
}

TEST_F(SaveSettingsTest, A_channel_with_an_empty_electrode_keeps_the_line_of_the_file) {
    platform.profile->Write("Electrodes Info", "Channel One", "kept");
    ChannelSetup[0].Electrode.clear();
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Electrodes Info", "Channel One"), "kept");
}

TEST_F(SaveSettingsTest, What_was_loaded_and_not_changed_is_written_as_it_was) {
    mWinInit::SaveSettings();
    const std::string channel = Line({"", "S-1", "Ag/AgCl", "R-2", "40.078", "3"});
    platform.profile->Write("Hardware", "Port Number", "-3");
    platform.profile->Write("Electrodes Info", "Channel One", channel);
    platform.profile->Write("Electrodes Info", "Channel Two",
                            Line({"Ca", "S-2", "None", "", "40.078", "7"}));
    platform.profile->Write("Electrodes Info", "Channel Three",
                            Line({"Unobtainium", "", "None", "", "N/A", "-2"}));
    const std::string before = ReadBytes(platform.SettingsFile());
    mWinInit::LoadSettings();
    EXPECT_EQ(HardwareSettings.HardwarePortNumber, -3);
    EXPECT_EQ(ChannelSetup[0].Electrode, "");
    EXPECT_EQ(ChannelSetup[0].SerialNo, "S-1");
    EXPECT_EQ(ChannelSetup[1].TempSensor, 7);
    EXPECT_EQ(ChannelSetup[2].TempSensor, -2);
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
    EXPECT_EQ(ReadBytes(platform.SettingsFile()), before);
}

TEST_F(SaveSettingsTest, A_single_point_of_the_file_is_written_as_it_was) {
    const std::string line = Line({"10:12:40 07.Mar.2003", "1", "0", "10;-55.3"});
    platform.profile->Write("Calibration Info", "Channel One", line);
    mWinInit::LoadSettings();
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
    EXPECT_EQ(Stored("Calibration Info", "Channel One"), line);
}

TEST_F(SaveSettingsTest, A_library_entry_of_no_electrode_stays_as_it_is) {
    platform.profile->Write("All Calibration Info", "Chan1_Electrodes_",
                            Line({"", "S-1", "None", "", "N/A", "7"}));
    const std::string before = ReadBytes(platform.SettingsFile());
    mWinInit::LoadCalibrationInfo("", 0);
    EXPECT_EQ(ChannelSetup[0].TempSensor, 7);
    EXPECT_EQ(mWinInit::SaveCalibrationInfo("", 0), Messages{});
    EXPECT_EQ(ReadBytes(platform.SettingsFile()), before);
}

TEST_F(SaveSettingsTest, Channels_beyond_the_channel_count_are_not_written) {
    ChannelSetup[4].Electrode = "Ca";
    Calibration[4] = Calcium();
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Electrodes Info", "Channel Five"), "missing");
    EXPECT_EQ(Stored("Calibration Info", "Channel Five"), "missing");
}

TEST_F(SaveSettingsTest, The_tables_of_the_sensors_are_left_alone) {
    platform.profile->Write("Temperature Sensor Calibration Matrix", "Temp Sensor One", "mine");
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Temperature Sensor Calibration Matrix", "Temp Sensor One"), "mine");
}

TEST_F(SaveSettingsTest, Other_sections_comments_and_their_order_stay) {
    const std::string foreign = "; my notes\r\n[Other Program]\r\nkey=value\r\n";
    WriteBytes(platform.SettingsFile(), foreign);
    mWinInit::SaveSettings();
    EXPECT_EQ(ReadBytes(platform.SettingsFile()).substr(0, foreign.size()), foreign);
}

TEST_F(SaveSettingsTest, A_control_character_in_a_text_does_not_break_its_line) {
    ProjectInfo.ProjectName = "two\r\nlines";
    ChannelSetup[0] = {"Ca",
                       "a\x0F"
                       "b",
                       "None",
                       "",
                       0,
                       0};
    mWinInit::SaveSettings();
    EXPECT_EQ(Stored("Project Info", "Project Name"), "two  lines");
    EXPECT_EQ(Stored("Electrodes Info", "Channel One"),
              Line({"Ca", "a b", "None", "", "N/A", "0"}));
}

TEST_F(SaveSettingsTest, A_text_beyond_129_characters_is_written_whole_and_said) {
    ProjectInfo.ProjectName = std::string(130, 'x');
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"The project name is longer than 129 characters. Only its beginning will "
                       "come back."});
    EXPECT_EQ(Stored("Project Info", "Project Name"), std::string(130, 'x'));
    ProjectInfo.ProjectName = std::string(129, 'x');
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
}

TEST_F(SaveSettingsTest, The_points_of_a_calibration_that_will_not_come_back_are_named) {
    Calibration[1] = Calcium();
    Calibration[1].PointCount = 6;
    for (std::size_t point = 0; point < 6; ++point) {
        Calibration[1].Standard[point] = 1000.001F;
        Calibration[1].CaliData[point] = -100.0001F;
    } // 24 characters in front, 19 a point: five end at 119, the sixth at 138
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"Channel 2: calibration point 6 does not fit into the settings file and "
                       "will not come back."});
    EXPECT_EQ(Stored("Calibration Info", "Channel Two").size(), 138U);
    for (std::size_t point = 0; point < 6; ++point)
        Calibration[1].Standard[point] = 1.234567E-05F;
    // 12 + 1 + 9 characters a point and its separator: four end at 116
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"Channel 2: calibration points 5 and 6 do not fit into the settings file "
                       "and will not come back."});
}

/// A calibration of two points that fills a line of this length, the last point being "7;8".
CalibrationRecord FillingLine(std::size_t length) {
    CalibrationRecord record = Calcium();
    record.Standard = {1, 7};
    record.CaliData = {2, 8};
    const std::string rest = Line({"", "2", "0", "1;2", "7;8"});
    record.CalibrationDate = std::string(length - rest.size(), 'd');
    return record;
}

TEST_F(SaveSettingsTest, A_calibration_that_fills_129_characters_comes_back_and_nothing_is_said) {
    Calibration[0] = FillingLine(129);
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 2);
    EXPECT_EQ(Calibration[0].CaliData[1], 8);
}

TEST_F(SaveSettingsTest, Of_a_longer_calibration_the_points_up_to_character_129_come_back) {
    const std::string one =
        "Channel 1: calibration point 2 does not fit into the settings file and "
        "will not come back.";
    const std::string both = "Channel 1: calibration points 1 and 2 do not fit into the settings "
                             "file and will not come back.";
    Calibration[0] = FillingLine(130);
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{one});
    Calibration[0] = FillingLine(133); // the first point ends at character 129
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{one});
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[0].PointCount, 1);
    Calibration[0] = FillingLine(134); // and at character 130
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{both});
    Calibration[0] = FillingLine(200); // of the date alone a part comes back
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{both});
}

TEST_F(SaveSettingsTest, The_points_that_were_named_are_those_that_are_missing_after_the_load) {
    Calibration[1] = Calcium();
    Calibration[1].PointCount = 6;
    Calibration[1].Standard.fill(1.234567E-05F);
    Calibration[1].CaliData.fill(-1.234567E-05F);
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"Channel 2: calibration points 4 to 6 do not fit into the settings file "
                       "and will not come back."});
    mWinInit::LoadSettings();
    EXPECT_EQ(Calibration[1].PointCount, 3); // 24 characters in front, 27 a point
    EXPECT_EQ(Calibration[1].CaliData[2], -1.234567E-05F);
}

TEST_F(SaveSettingsTest, Channel_names_that_do_not_fit_are_said) {
    ChannelSetup[3] = {"Ca", std::string(60, 's'), std::string(60, 'r'), "R", 0, 0};
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"Channel 4: the names and serial numbers are longer than the settings file "
                       "can hold. Only their beginning will come back."});
}

TEST_F(SaveSettingsTest, Channel_names_that_fill_129_characters_come_back_and_nothing_is_said) {
    const std::string rest = Line({"Ca", "", "", "", "N/A", "3"});
    ChannelSetup[3] = {"Ca", std::string(129 - rest.size(), 's'), "", "", 0, 3};
    EXPECT_EQ(mWinInit::SaveSettings(), Messages{});
    mWinInit::LoadSettings();
    EXPECT_EQ(ChannelSetup[3].TempSensor, 3);
    ChannelSetup[3].SerialNo += 's';
    EXPECT_EQ(mWinInit::SaveSettings().size(), 1U);
}

TEST_F(SaveSettingsTest, A_file_that_cannot_be_written_is_said_once) {
    std::filesystem::remove_all(platform.places.ConfigurationFolder());
    EXPECT_EQ(mWinInit::SaveSettings(),
              Messages{"The settings could not be saved: the settings file cannot be written."});
}

} // namespace
