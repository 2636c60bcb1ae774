#include "base/RunTimeError.h"
#include "files/LiveReport.h"
#include "files/MeasuringRun.h"
#include "files/SetUpRun.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

class SaveMeasure : public testing::Test {
protected:
    SaveMeasure() : file(platform.folder.Path() / "run.4ch") {
        SetUpRun();
        run.CreateHeadLines(file);
        WriteBytes(file, "");
    }

    std::string Save(std::int32_t number, const std::string& comment) {
        run.SaveMeasure(file, number, comment, displayed);
        return ReadBytes(file);
    }

    void MakeAll(const std::string& electrode) {
        for (auto& channel : mWinInit::ChannelSetup)
            channel.Electrode = electrode;
        run.CreateHeadLines(file);
        WriteBytes(file, "");
    }

    fake::Platform platform;
    FileOpr::MeasuringRun run;
    std::filesystem::path file;
    FileOpr::DisplayedChannels displayed = DisplayedRun();
};

const std::string firstRecord =
    "Record 1\tAt\t14:05:33 07.Mar.2003\r\n"
    "Comment:\tfirst look\r\n"
    "mV             \t59.0        \t-12.3       \t-412.0      \tNA          \r\n"
    "pH             \t6.00        \t            \t            \tNA          \r\n"
    "ppm            \t            \t40.1        \t            \tNA          \r\n"
    "mol/l          \t            \t1.00E-03    \t            \tNA          \r\n"
    "\xB0"
    "C             \t21.5        \t22.0        \t            \tNA          \r\n";

TEST_F(SaveMeasure, A_record_is_written_byte_for_byte) {
    EXPECT_EQ(Save(1, "first look"), firstRecord + Separator());
}

TEST_F(SaveMeasure, Records_are_appended_and_the_comment_may_be_empty) {
    Save(1, "first look");
    platform.clock.now.second = 34;
    const std::string bytes = Save(2, "");
    EXPECT_TRUE(bytes.starts_with(firstRecord + Separator() +
                                  "Record 2\tAt\t14:05:34 07.Mar.2003\r\nComment:\t\r\nmV  "));
}

TEST_F(SaveMeasure, A_run_of_None_and_Redox_has_only_potential_and_temperature) {
    MakeAll("Redox");
    EXPECT_EQ(Save(7, ""),
              "Record 7\tAt\t14:05:33 07.Mar.2003\r\nComment:\t\r\n"
              "mV             \t59.0        \t-12.3       \t-412.0      \tNA          \r\n"
              "\xB0"
              "C             \t21.5        \t22.0        \t            \tNA          \r\n" +
                  Separator());
}

TEST_F(SaveMeasure, A_name_with_pH_has_the_pH_row_even_on_a_Redox_electrode) {
    MakeAll("Redox/PH");
    const std::string bytes = Save(7, "");
    EXPECT_NE(bytes.find("\r\npH             \t6.00"), std::string::npos);
    EXPECT_EQ(bytes.find("\r\nppm"), std::string::npos);
}

TEST_F(SaveMeasure, The_rows_are_those_of_the_header_whatever_the_setup_is_now) {
    for (auto& channel : mWinInit::ChannelSetup)
        channel.Electrode = "None";
    EXPECT_EQ(Save(1, "first look"), firstRecord + Separator());
}

TEST_F(SaveMeasure, A_channel_whose_potential_shows_only_blanks_is_idle) {
    displayed[0][Quantity::mV] = " \t\r\n ";
    EXPECT_NE(Save(1, "").find("mV             \tNA          \t-12.3       \t"), std::string::npos);
}

TEST_F(SaveMeasure, A_displayed_text_is_cut_at_twelve_characters) {
    displayed[0][Quantity::mV] = "1234567890123";
    EXPECT_NE(Save(1, "").find("mV             \t123456789012\t-12.3       \t"), std::string::npos);
}

TEST_F(SaveMeasure, A_tab_in_a_displayed_text_does_not_shift_the_columns) {
    displayed[0][Quantity::mV] = "5\t9";
    EXPECT_NE(Save(1, "").find("mV             \t5 9         \t-12.3       \t"), std::string::npos);
}

TEST_F(SaveMeasure, A_long_comment_is_written_whole) {
    const std::string comment(10000, 'c');
    EXPECT_NE(Save(1, comment).find("\r\nComment:\t" + comment + "\r\nmV  "), std::string::npos);
}

TEST_F(SaveMeasure, A_line_break_in_a_comment_becomes_a_blank_and_a_tab_stays) {
    EXPECT_NE(Save(1, "a\r\nRecord 9\tb").find("\r\nComment:\ta  Record 9\tb\r\nmV  "),
              std::string::npos);
}

TEST_F(SaveMeasure, Each_live_report_is_told_once_the_record_is_in_the_file) {
    std::vector<std::string> found;
    const auto look = [&] { found.push_back(ReadBytes(file)); };
    const FileOpr::LiveReport first(run, look);
    {
        const FileOpr::LiveReport second(run, look);
        Save(1, "first look");
    }
    EXPECT_EQ(found, std::vector<std::string>(2, firstRecord + Separator()));
    Save(2, "");
    EXPECT_EQ(found.size(), 3U) << "the second report has ended";
}

TEST_F(SaveMeasure, A_live_report_may_end_another_one) {
    std::optional<FileOpr::LiveReport> second;
    const FileOpr::LiveReport first(run, [&second] { second.reset(); });
    int told = 0;
    second.emplace(run, [&told] { ++told; });
    Save(1, "");
    EXPECT_EQ(told, 0);
}

TEST_F(SaveMeasure, A_record_that_cannot_be_written_is_not_told) {
    int told = 0;
    const FileOpr::LiveReport report(run, [&told] { ++told; });
    file = platform.folder.Path() / "gone" / "run.4ch";
    EXPECT_THROW(run.SaveMeasure(file, 1, "", displayed), RunTimeError);
    EXPECT_EQ(told, 0);
}

TEST_F(SaveMeasure, Eight_channels_have_eight_cells) {
    SetUpRun(8);
    const std::string bytes = Save(1, "");
    EXPECT_NE(
        bytes.find("\r\nmV             \t59.0        \t-12.3       \t-412.0      \tNA          "
                   "\t59.0        \t-12.3       \t-412.0      \tNA          \r\n"),
        std::string::npos);
}

} // namespace
