#include "screens/frmMain/MainScreenTest.h"

#include "app/Mcommon.h"
#include "files/FileOpr.h"
#include "files/MeasurementReader.h"
#include "platform/qt/QtDialogs.h"
#include "screens/Report/Report.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

class RecordingTest : public MainScreenTest {
protected:
    QString Counter() { return Find<QLabel>(*form, "lblRec").text(); }
    QString Comment() { return Find<QLineEdit>(*form, "txtComment").text(); }

    /// Starts an automatic run into run.4ch; its first record is written.
    std::filesystem::path StartAutomatic(const char* period) {
        Pick(*form, "cboAcqr", "Automatic");
        Type(*form, "txtTimer", period);
        const auto target = AnswerSaveDialog("run.4ch");
        Click(*form, "cmdPage", frmMain::run);
        EXPECT_EQ(RunButton(), "&Stop");
        return target;
    }

    static Report* OpenReport() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* report = qobject_cast<Report*>(window))
                return report;
        return nullptr;
    }
    static std::int32_t LastViewedRecord() {
        return Mreport::PageRecordRange(OpenReport()->File().pages, 0).lastRecord.number;
    }

    void StopAndGoBack() {
        if (RunButton() == "&Stop")
            Click(*form, "cmdPage", frmMain::run);
        Click(*form, "cmdPage", frmMain::switchPage);
    }
};

} // namespace

TEST_F(RecordingTest, The_first_record_asks_for_the_file_and_later_ones_do_not) {
    OpenReading();
    AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition - run.4ch");
    EXPECT_EQ(Counter(), "1");
    EXPECT_EQ(RunButton(), "&Record");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Counter(), "2");
    EXPECT_TRUE(Element<QPushButton>(*form, "cmdPage", frmMain::switchPage).isEnabled());
}

TEST_F(RecordingTest, Back_moves_the_records_into_the_chosen_file) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_FALSE(std::filesystem::exists(target));
    const auto temporary = run->currentMeasurementPath;
    EXPECT_TRUE(std::filesystem::exists(temporary));
    StopAndGoBack();
    EXPECT_FALSE(std::filesystem::exists(temporary));
    const auto file = FileOpr::ReadMeasurementFile(target);
    EXPECT_EQ(file.header.projectName, "River water");
    ASSERT_EQ(file.records.size(), 2U);
    EXPECT_EQ(file.records[1].number, 2);
}

TEST_F(RecordingTest, A_record_holds_the_texts_that_the_page_shows) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    StopAndGoBack();
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 1U);
    EXPECT_EQ(file.records[0].timeStamp, "14:05:33 07.Mar.2003");
    const auto& cells = file.records[0].cells;
    EXPECT_EQ(Mcommon::TrimControl(cells[0][Quantity::mV]), "188.5");
    EXPECT_EQ(Mcommon::TrimControl(cells[0][Quantity::ppm]), "31.6");
    EXPECT_EQ(Mcommon::TrimControl(cells[0][Quantity::mol_l]), "7.89E-04");
    EXPECT_EQ(Mcommon::TrimControl(cells[0][Quantity::celsius]), "25.0");
    EXPECT_EQ(Mcommon::TrimControl(cells[1][Quantity::pH]), "6.00");
    for (const std::string& cell : cells[3]) // not selected
        EXPECT_EQ(Mcommon::TrimControl(cell), "NA");
}

TEST_F(RecordingTest, Records_of_a_later_visit_follow_in_the_same_file) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    StopAndGoBack();
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition - run.4ch");
    EXPECT_EQ(Counter(), "0");
    ReadFrame(frame);
    Click(*form, "cmdPage", frmMain::run);
    StopAndGoBack();
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 2U);
    EXPECT_EQ(file.records[1].number, 2);
}

TEST_F(RecordingTest, A_file_of_that_name_is_replaced) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    WriteBytes(target, "an older run\r\n");
    Click(*form, "cmdPage", frmMain::run);
    StopAndGoBack();
    EXPECT_EQ(ReadBytes(target).find("an older run"), std::string::npos);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 1U);
}

TEST_F(RecordingTest, A_cancelled_save_dialog_records_nothing) {
    OpenReading();
    platform.dialogs.ExpectFileDialog(
        [](const platform::FileDialogRequest&) { return std::nullopt; });
    Type(*form, "txtComment", "first");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_EQ(Counter(), "0");
    EXPECT_EQ(Comment(), "first");
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition");
    EXPECT_TRUE(run->targetFile.empty());
}

TEST_F(RecordingTest, A_comment_is_used_by_one_record_only) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Type(*form, "txtComment", "Record 5, 10 mV ----");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Comment(), "");
    Click(*form, "cmdPage", frmMain::run);
    StopAndGoBack();
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 2U);
    EXPECT_EQ(file.records[0].comment, "Record 5, 10 mV ----");
    EXPECT_EQ(file.records[1].comment, "");
}

TEST_F(RecordingTest, A_period_below_one_second_is_refused_and_nothing_is_recorded) {
    OpenReading();
    Pick(*form, "cboAcqr", "Automatic");
    for (const char* period : {"0.99", "0", "-5", "", "soon"}) {
        Type(*form, "txtTimer", period);
        Element<QWidget>(*form, "cmdPage", frmMain::run).setFocus();
        platform.dialogs.ExpectMessage("The period cannot be less than One second", information);
        Click(*form, "cmdPage", frmMain::run);
        EXPECT_TRUE(Find<QWidget>(*form, "txtTimer").hasFocus());
        EXPECT_EQ(RunButton(), "&Record");
        EXPECT_EQ(Counter(), "0");
    }
}

TEST_F(RecordingTest, The_period_does_not_matter_in_manual_mode) {
    OpenReading();
    Type(*form, "txtTimer", "0");
    AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingTest, An_automatic_run_records_at_once_and_then_once_a_period) {
    OpenReading();
    StartAutomatic("2");
    EXPECT_EQ(Counter(), "1");
    TimePasses(1s);
    EXPECT_EQ(Counter(), "1");
    TimePasses(1s);
    EXPECT_EQ(Counter(), "2");
    TimePasses(2s);
    EXPECT_EQ(Counter(), "3");
}

TEST_F(RecordingTest, A_period_of_exactly_one_second_is_accepted) {
    OpenReading();
    StartAutomatic("1");
    TimePasses(1s);
    EXPECT_EQ(Counter(), "2");
}

TEST_F(RecordingTest, A_period_of_one_and_a_half_seconds_records_every_two) {
    OpenReading();
    StartAutomatic("1.5");
    for (int tick = 0; tick < 16; ++tick) // four seconds
        TimePasses(250ms);
    EXPECT_EQ(Counter(), "3");
}

TEST_F(RecordingTest, An_automatic_run_locks_what_must_not_change_until_Stop) {
    OpenReading();
    StartAutomatic("1");
    for (const char* control : {"cmdPage_0", "txtTimer", "cboAcqr"})
        EXPECT_FALSE(Find<QWidget>(*form, control).isEnabled()) << control;
    EXPECT_TRUE(Find<QWidget>(*form, "txtComment").isEnabled());
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Record");
    for (const char* control : {"cmdPage_0", "txtTimer", "cboAcqr"})
        EXPECT_TRUE(Find<QWidget>(*form, control).isEnabled()) << control;
    TimePasses(10s);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingTest, A_comment_typed_during_an_automatic_run_goes_into_the_next_record) {
    OpenReading();
    const auto target = StartAutomatic("1");
    Type(*form, "txtComment", "stirred");
    TimePasses(1s);
    EXPECT_EQ(Comment(), "");
    TimePasses(1s);
    StopAndGoBack();
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 3U);
    EXPECT_EQ(file.records[1].comment, "stirred");
    EXPECT_EQ(file.records[2].comment, "");
}

TEST_F(RecordingTest, An_hour_at_period_one_gives_3600_records_give_or_take_one) {
    OpenReading();
    const auto target = StartAutomatic("1");
    for (int tick = 0; tick < 4 * 3600; ++tick) {
        platform.clock.now.second = tick % 60; // the wall clock does not matter
        TimePasses(250ms);
    }
    StopAndGoBack();
    const auto file = FileOpr::ReadMeasurementFile(target);
    EXPECT_NEAR(static_cast<double>(file.records.size()), 3600, 1);
    EXPECT_EQ(file.records.back().number, static_cast<std::int32_t>(file.records.size()));
}

TEST_F(RecordingTest, A_failed_link_ends_the_automatic_run) {
    OpenReading();
    StartAutomatic("1");
    link->IntervalTicks();
    TimeOut();
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    Tick(*form, "tmrRead");
    EXPECT_EQ(RunButton(), "&Start");
    EXPECT_TRUE(Element<QWidget>(*form, "cmdPage", frmMain::switchPage).isEnabled());
    EXPECT_TRUE(Find<QWidget>(*form, "txtTimer").isEnabled());
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Record");
    ReadFrame(frame);
    TimePasses(10s);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingTest, A_record_that_is_due_while_the_link_has_failed_is_left_out) {
    OpenReading();
    StartAutomatic("1");
    link->IntervalTicks();
    TimeOut();
    TimePasses(1s);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingTest, Reading_and_recording_go_on_while_a_box_is_open) {
    platform::QtDialogs realDialogs;
    const platform::Services services{realDialogs,       platform.desktop,   platform.clock,
                                      *platform.profile, platform.userStore, platform.places,
                                      *platform.files,   platform.printing};
    OpenReading();
    const auto target = StartAutomatic("1");
    platform::Install(&services);
    QTimer::singleShot(0, [this] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "Are you sure you want to exit?");
        EXPECT_EQ(box->windowTitle(), "Vantrel Data Acquisition");
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
        ReadFrame({0, 0, 0, 0, 4321, 0, 0, 0});
        EXPECT_EQ(CellText(18), "432.1");
        TimePasses(1s);
        EXPECT_EQ(Counter(), "2");
        box->button(QMessageBox::No)->click();
    });
    Click(*form, "cmdPage", frmMain::leave);
    EXPECT_TRUE(form->isVisible());
    StopAndGoBack();
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
}

TEST_F(RecordingTest, A_run_does_not_start_when_the_link_fails_while_the_file_is_chosen) {
    OpenReading();
    Pick(*form, "cboAcqr", "Automatic");
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        link->IntervalTicks();
        TimeOut();
        Tick(*form, "tmrRead");
        return platform.folder.Path() / "run.4ch";
    });
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Start");
    EXPECT_TRUE(Element<QWidget>(*form, "cmdPage", frmMain::switchPage).isEnabled());
    TimePasses(5s);
    EXPECT_EQ(Counter(), "0");
}

TEST_F(RecordingTest, Values_from_before_a_failure_are_not_recorded_by_hand) {
    OpenReading();
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        link->IntervalTicks();
        TimeOut();
        Tick(*form, "tmrRead");
        return platform.folder.Path() / "run.4ch";
    });
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Start");
    EXPECT_EQ(Counter(), "0");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_TRUE(FileOpr::ReadMeasurementFile(platform.folder.Path() / "run.4ch").records.empty());
}

TEST_F(RecordingTest, An_automatic_record_waits_for_the_averages_of_a_new_number) {
    OpenReading();
    StartAutomatic("1");
    platform.dialogs.ExpectInput("Input new averaging number for the measuring.", "1", "3");
    Click(*form, "cmdPage", frmMain::averaging);
    TimePasses(1s);
    EXPECT_EQ(Counter(), "1");
    ReadFrame(frame);
    TimePasses(1s);
    EXPECT_EQ(Counter(), "2");
}

TEST_F(RecordingTest, A_target_that_cannot_be_written_is_said_and_nothing_is_counted) {
    OpenReading();
    const auto target = AnswerSaveDialog("missing/run.4ch");
    platform.dialogs.ExpectAnyMessage(critical);
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Counter(), "0");
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(RecordingTest, The_live_report_shows_the_target_with_all_records_so_far) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::report);
    const Report* report = OpenReport();
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->isVisible());
    EXPECT_TRUE(report->windowTitle().contains("run.4ch"));
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 1U);
}

TEST_F(RecordingTest, The_report_button_brings_later_records_into_an_open_report) {
    OpenReading();
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::report);
    ASSERT_EQ(LastViewedRecord(), 1);
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::report);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
    EXPECT_EQ(LastViewedRecord(), 2);
}

TEST_F(RecordingTest, While_the_report_follows_records_go_straight_to_the_target) {
    OpenReading();
    const auto target = StartAutomatic("1");
    Click(*form, "cmdPage", frmMain::report);
    EXPECT_TRUE(run->IsFollowing());
    TimePasses(1s);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_FALSE(run->IsFollowing());
    Pick(*form, "cboAcqr", "Manual");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 2U);
    Click(*form, "cmdPage", frmMain::switchPage);
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 3U);
    EXPECT_EQ(file.records[2].number, 3);
}

TEST_F(RecordingTest, A_warning_does_not_hold_up_the_automatic_run) {
    std::filesystem::create_directory(platform.folder.Path() / "stick");
    OpenReading();
    Pick(*form, "cboAcqr", "Automatic");
    AnswerSaveDialog("stick/run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::report); // the live report: records go straight into the file
    std::filesystem::rename(platform.folder.Path() / "stick", platform.folder.Path() / "pocket");
    platform.dialogs.ExpectAnyMessage(exclamation);
    platform.dialogs.whileMessageIsOpen = [this] {
        for (int i = 0; i < 3; ++i)
            TimePasses(1s);
    };
    TimePasses(1s);
    Settle();
    EXPECT_EQ(Counter(), "5");
    platform.dialogs.whileMessageIsOpen = {};
    std::filesystem::rename(platform.folder.Path() / "pocket", platform.folder.Path() / "stick");
}

TEST_F(RecordingTest, Nothing_is_recorded_before_the_first_values_even_if_the_pointer_has_changed) {
    OpenMeasuring();
    platform.desktop.pointer = platform::MousePointer::normal; // a report has been loaded meanwhile
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Counter(), "0");
}

TEST_F(RecordingTest, An_error_names_its_own_routine_although_timers_have_ticked_meanwhile) {
    OpenReading();
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        TimePasses(250ms);
        Tick(*form, "tmrRead");
        return platform.folder.Path() / "missing" / "run.4ch";
    });
    platform.dialogs.ExpectAnyMessage(critical);
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_TRUE(platform.dialogs.lastMessage.ends_with("Error location - frmMain - cmdPage"))
        << platform.dialogs.lastMessage;
}
