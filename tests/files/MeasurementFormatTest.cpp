#include "files/MeasuringRun.h"
#include "files/SetUpRun.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using mWinInit::Calibration;
using mWinInit::ChannelSetup;

class Header : public testing::Test {
protected:
    Header() : file(platform.folder.Path() / "run.4ch") { SetUpRun(); }

    std::string Write() {
        run.CreateHeadLines(file);
        return ReadBytes(file);
    }

    static void MakeAll(const std::string& electrode) {
        for (auto& channel : ChannelSetup)
            channel.Electrode = electrode;
    }

    fake::Platform platform;
    FileOpr::MeasuringRun run;
    std::filesystem::path file;
};

const std::string projectLine =
    "Project Name: Well 7\tAnalyst: A. Nalyst\tReport created at: 14:05:33  07.Mar.2003\r\n";

TEST_F(Header, A_four_channel_header_is_written_byte_for_byte) {
    const std::string expected =
        Separator() + projectLine + Separator() +
        "Channel :      \tChan 1      \tChan 2      \tChan 3      \tChan 4      \r\n"
        "Electrode   :  \tH (pH)      \tCa          \tRedox       \tNone        \r\n"
        "Serial No.  :  \tPH-11       \tCA-12       \tRX-13       \t            \r\n"
        "Ref. Type   :  \tDouble      \tSingle      \tNone        \tNone        \r\n"
        "Ref. S/N    :  \tR-1         \tR-2         \t            \t            \r\n"
        "Temp. Sens. :  \t1           \t2           \tN/A         \tN/A         \r\n" +
        Separator() +
        "Calibration Info.\r\n"
        "Date :         \t07.Mar.2003 \t06.Mar.2003 \tN/A         \tN/A         \r\n"
        "Time :         \t14:05       \t10:12:40    \tN/A         \tN/A         \r\n"
        "Cali. Points : \t2           \t3           \tN/A         \tN/A         \r\n"
        "Std. Unit :    \tpH          \tmol/L       \tN/A         \tN/A         \r\n"
        "Standard 1:    \t4           \t0.0001      \tN/A         \tN/A         \r\n"
        "Standard 2:    \t7           \t0.001       \tN/A         \tN/A         \r\n"
        "Standard 3:    \t0           \t0.01        \tN/A         \tN/A         \r\n"
        "Cali. Unit :   \tmV          \tmV          \tN/A         \tN/A         \r\n"
        "Cali. Data 1:  \t177.5       \t-55.3       \tN/A         \tN/A         \r\n"
        "Cali. Data 2:  \t0           \t2.1         \tN/A         \tN/A         \r\n"
        "Cali. Data 3:  \t0           \t31          \tN/A         \tN/A         \r\n"
        "Slopes Info.\r\n"
        "Slope 1:       \t-59.2       \t57.4        \tN/A         \tN/A         \r\n"
        "Slope 2:       \tN/A         \t28.9        \tN/A         \tN/A         \r\n" +
        Separator();
    EXPECT_EQ(Write(), expected);
}

TEST_F(Header, Without_an_electrode_to_calibrate_there_are_eight_slopes_cells) {
    MakeAll("None");
    ChannelSetup[2].Electrode = "a rEDOX electrode";
    const std::string bytes = Write();
    const std::string expected =
        Separator() + "Slopes Info.:\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\r\n" + Separator();
    EXPECT_TRUE(bytes.ends_with(expected)) << bytes;
    EXPECT_EQ(bytes.find("Calibration Info."), std::string::npos);
}

TEST_F(Header, An_electrode_that_was_never_calibrated_has_a_block_without_points) {
    MakeAll("None");
    ChannelSetup[1].Electrode = "none"; // only "None" itself is no electrode
    for (auto& record : Calibration)
        record = {};
    const std::string na = "\tN/A         \tN/A         \tN/A         \tN/A         \r\n";
    const std::string expected = "Calibration Info.\r\nDate :         " + na +
                                 "Time :         " + na + "Cali. Points : " + na +
                                 "Std. Unit :    " + na + "Cali. Unit :   " + na +
                                 "Slopes Info.\r\n" + Separator();
    EXPECT_TRUE(Write().ends_with(Separator() + expected));
}

TEST_F(Header, Eight_channels_have_eight_cells_in_each_row) {
    SetUpRun(8);
    const std::string bytes = Write();
    EXPECT_NE(bytes.find("Channel :      \tChan 1      \tChan 2      \tChan 3      \tChan 4      "
                         "\tChan 5      \tChan 6      \tChan 7      \tChan 8      \r\n"),
              std::string::npos);
    EXPECT_NE(bytes.find("Slope 2:       \tN/A         \t28.9        \tN/A         \tN/A         "
                         "\tN/A         \t28.9        \tN/A         \tN/A         \r\n"),
              std::string::npos);
}

TEST_F(Header, A_name_longer_than_its_cell_is_cut_at_twelve_characters) {
    ChannelSetup[1].Electrode = "Ca in sea water";
    EXPECT_NE(Write().find("\tCa in sea wa\tRedox"), std::string::npos);
}

TEST_F(Header, Only_the_plain_pH_electrode_has_the_unit_pH) {
    ChannelSetup[0].Electrode = "glass (pH)";
    EXPECT_NE(Write().find("Std. Unit :    \tppm         \tmol/L       \t"), std::string::npos);
}

TEST_F(Header, A_stored_point_beyond_the_channels_count_is_shown_as_it_stands) {
    Calibration[0].Standard[2] = 9.21F;
    const std::string bytes = Write();
    EXPECT_NE(bytes.find("Standard 3:    \t9.21        \t0.01        "), std::string::npos);
    EXPECT_NE(bytes.find("Slope 2:       \tN/A         \t"), std::string::npos);
}

TEST_F(Header, A_line_break_or_tab_in_a_name_becomes_a_blank) {
    mWinInit::ProjectInfo.ProjectName = "Well\t7\r\nnorth";
    mWinInit::ProjectInfo.Experimentator = "A.\tNalyst";
    ChannelSetup[0].SerialNo = "PH\t11\n";
    const std::string bytes = Write();
    EXPECT_NE(bytes.find("Project Name: Well 7  north\tAnalyst: A. Nalyst\tReport"),
              std::string::npos);
    EXPECT_NE(bytes.find("Serial No.  :  \tPH 11       \tCA-12"), std::string::npos);
}

TEST_F(Header, Creating_the_header_overwrites_the_file) {
    WriteBytes(file, std::string(100000, 'x'));
    const std::string bytes = Write();
    EXPECT_TRUE(bytes.starts_with(Separator() + projectLine));
    EXPECT_EQ(bytes.find('x'), bytes.find("x       ", 0)); // the x of "Redox" alone
    EXPECT_LT(bytes.size(), 3000U);
}

TEST_F(Header, The_rows_of_the_run_follow_the_electrodes_of_the_mode_alone) {
    SetUpRun(8);
    MakeAll("None");
    ChannelSetup[6].Electrode = "my Ph probe";
    ChannelSetup[5].TempSensor = 3;
    run.CreateHeadLines(file);
    EXPECT_EQ(run.Rows(), (MeasurementFormat::RunRows{true, true, true}));
    mWinInit::HardwareSettings.ChannelCount = 4;
    ChannelSetup[0].TempSensor = ChannelSetup[1].TempSensor = 0;
    run.CreateHeadLines(file);
    EXPECT_EQ(run.Rows(), (MeasurementFormat::RunRows{false, false, false}));
}

TEST_F(Header, A_run_has_a_temperature_sensor_from_number_1_on) {
    for (auto& channel : ChannelSetup)
        channel.TempSensor = 0;
    ChannelSetup[2].TempSensor = 1;
    run.CreateHeadLines(file);
    EXPECT_TRUE(run.Rows().tempSensor);
    ChannelSetup[2].TempSensor = -1;
    run.CreateHeadLines(file);
    EXPECT_FALSE(run.Rows().tempSensor);
}

TEST(BuildRecord, The_cells_of_channels_that_are_not_in_use_are_blank) {
    const auto record = MeasurementFormat::BuildRecord(1, {}, "", DisplayedRun(), 4);
    EXPECT_EQ(record.cells[3][Quantity::mV], "NA          ") << "in use, and idle";
    for (std::size_t i = 4; i < maxChannels; ++i)
        for (const auto& cell : record.cells[i])
            EXPECT_EQ(cell, std::string(12, ' ')) << i;
}

TEST_F(Header, A_nonempty_name_without_none_or_redox_makes_ion_rows) {
    MakeAll("Redox");
    ChannelSetup[3].Electrode = "NONE";
    run.CreateHeadLines(file);
    EXPECT_FALSE(run.Rows().ion);
    ChannelSetup[3].Electrode = "H (pH)"; // a pH electrode has these rows as well
    run.CreateHeadLines(file);
    EXPECT_TRUE(run.Rows().ion);
}

} // namespace
