#include "screens/frmMain/MainScreenTest.h"

#include "files/FileOpr.h"
#include "files/MeasurementReader.h"
#include "settings/mWinInit.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QSpinBox>

namespace {

using namespace std::chrono_literals;
using platform::style::defaultButton2;
using platform::style::question;
using platform::style::yesNo;

class ExitTest : public MainScreenTest {
protected:
    int ended = 0;

    void AnswerExit(int answer) {
        QObject::connect(form.get(), &frmMain::Ended, [this] { ++ended; });
        platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292, answer);
    }

    /// Two records into run.4ch, still in the temporary file.
    std::filesystem::path RecordTwo() {
        OpenReading();
        auto target = AnswerSaveDialog("target/run.4ch");
        std::filesystem::create_directories(target.parent_path());
        Click(*form, "cmdPage", frmMain::run);
        Click(*form, "cmdPage", frmMain::run);
        return target;
    }

    std::string RecoveryPrompt(const std::filesystem::path& target) {
        return "A recording was interrupted before its records reached their file.\n\nRecords: 2, "
               "the last at 14:05:33 07.Mar.2003\nFile: " +
               target.string() +
               "\n\nBring the records into the file now? Otherwise they are offered again at the "
               "next start.";
    }

    /// As after a crash: the form is gone, the temporary file stays without its lock.
    void Crash() {
        form.reset();
        run.reset();
    }
};

} // namespace

TEST_F(ExitTest, No_keeps_the_program_running_with_nothing_saved) {
    Open();
    const std::string before = ReadBytes(platform.SettingsFile());
    Type(*form, "txtEntry_2", "Lake");
    AnswerExit(platform::button::no);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(link->serial.PortOpen());
    EXPECT_EQ(ReadBytes(platform.SettingsFile()), before);
}

TEST_F(ExitTest, Yes_saves_the_settings_closes_the_port_and_ends) {
    Open();
    form->move(120, 80);
    Type(*form, "txtEntry_2", "Lake");
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(link->serial.PortOpen());
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    mWinInit::Reset();
    mWinInit::LoadSettings();
    EXPECT_EQ(mWinInit::ProjectInfo.ProjectName, "Lake");
    EXPECT_EQ(mWinInit::WindowX, 120);
    EXPECT_EQ(mWinInit::WindowY, 80);
    EXPECT_EQ(mWinInit::ChannelSetup[0].SerialNo, "CA-1");
}

TEST_F(ExitTest, What_was_not_touched_is_handed_back_as_it_was_loaded) {
    mWinInit::HardwareSettings.HardwarePortNumber = -3;
    mWinInit::ChannelSetup[1].TempSensor = 7;
    mWinInit::ChannelSetup[3].Electrode = "";
    Open();
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_EQ(mWinInit::HardwareSettings.HardwarePortNumber, -3);
    EXPECT_EQ(mWinInit::ChannelSetup[1].TempSensor, 7);
    EXPECT_EQ(mWinInit::ChannelSetup[3].Electrode, "");
    EXPECT_EQ(mWinInit::ChannelSetup[0].MolarMass, 40.078F);
}

TEST_F(ExitTest, What_was_changed_is_kept) {
    mWinInit::HardwareSettings.HardwarePortNumber = -3;
    mWinInit::ChannelSetup[1].TempSensor = 7;
    Open();
    Find<QSpinBox>(*form, "txtPortNumber").setValue(4);
    Pick(*form, "cboEntry_17", "3");
    Type(*form, "txtMolarMass_0", "40.1");
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_EQ(mWinInit::HardwareSettings.HardwarePortNumber, 4);
    EXPECT_EQ(mWinInit::ChannelSetup[1].TempSensor, 3);
    EXPECT_EQ(mWinInit::ChannelSetup[0].MolarMass, 40.1F);
}

TEST_F(ExitTest, The_windows_own_close_button_asks_too) {
    Open();
    AnswerExit(platform::button::no);
    EXPECT_FALSE(form->close());
}

TEST_F(ExitTest, Without_a_recording_no_temporary_file_stays) {
    OpenReading();
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_TRUE(std::filesystem::is_empty(platform.places.TemporaryFolder()));
}

TEST_F(ExitTest, Leaving_moves_the_records_into_their_file) {
    const auto target = RecordTwo();
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
    EXPECT_TRUE(std::filesystem::is_empty(platform.places.TemporaryFolder()));
}

TEST_F(ExitTest, Leaving_during_an_automatic_run_keeps_every_record) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Pick(*form, "cboAcqr", "Automatic");
    Click(*form, "cmdPage", frmMain::run);
    TimePasses(1s);
    AnswerExit(platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}

TEST_F(ExitTest, At_the_sessions_end_an_automatic_run_is_kept_without_a_question_and_goes_on) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Pick(*form, "cboAcqr", "Automatic");
    Click(*form, "cmdPage", frmMain::run);
    TimePasses(1s);
    form->move(120, 80);

    form->EndSession();

    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
    EXPECT_TRUE(form->isVisible());
    TimePasses(1s); // another program has kept the session
    form->EndSession();
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 3U);
    mWinInit::Reset();
    mWinInit::LoadSettings();
    EXPECT_EQ(mWinInit::WindowX, 120);
}

TEST_F(ExitTest, At_the_sessions_end_records_that_cannot_be_moved_wait_for_the_next_start) {
    const auto target = RecordTwo();
    std::filesystem::remove_all(target.parent_path());

    form->EndSession();

    std::filesystem::create_directories(target.parent_path());
    Crash();
    platform.dialogs.ExpectMessage(RecoveryPrompt(target), Style(yesNo, question),
                                   platform::button::yes);
    Open();
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}

TEST_F(ExitTest, Records_that_cannot_be_moved_are_left_behind_only_after_a_second_yes) {
    const auto target = RecordTwo();
    std::filesystem::remove_all(target.parent_path());
    AnswerExit(platform::button::yes);
    platform.dialogs.ExpectAnyMessage(Style(yesNo, platform::style::exclamation, defaultButton2),
                                      platform::button::no);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    ReadFrame(frame); // reading goes on
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    EXPECT_EQ(RunButton(), "&Record");

    platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292, platform::button::yes);
    platform.dialogs.ExpectAnyMessage(Style(yesNo, platform::style::exclamation, defaultButton2),
                                      platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(std::filesystem::is_empty(platform.places.TemporaryFolder()));
}

TEST_F(ExitTest, A_failed_move_on_Back_is_said_and_the_records_wait_for_the_next) {
    const auto target = RecordTwo();
    std::filesystem::remove_all(target.parent_path());
    platform.dialogs.ExpectAnyMessage(critical);
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(form->ShownPage(), frmMain::Page::setup);
    std::filesystem::create_directories(target.parent_path());
    Click(*form, "cmdPage", frmMain::switchPage);
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}

TEST_F(ExitTest, An_interrupted_recording_is_offered_at_the_next_start) {
    const auto target = RecordTwo();
    Crash();
    platform.dialogs.ExpectMessage(RecoveryPrompt(target), Style(yesNo, question),
                                   platform::button::yes);
    Open();
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}

TEST_F(ExitTest, An_interrupted_recording_that_is_declined_is_offered_again) {
    const auto target = RecordTwo();
    Crash();
    platform.dialogs.ExpectMessage(RecoveryPrompt(target), Style(yesNo, question),
                                   platform::button::no);
    Open();
    EXPECT_FALSE(std::filesystem::exists(target));
    Crash();
    platform.dialogs.ExpectMessage(RecoveryPrompt(target), Style(yesNo, question),
                                   platform::button::yes);
    Open();
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}
