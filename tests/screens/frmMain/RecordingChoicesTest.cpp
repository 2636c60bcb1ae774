#include "screens/frmMain/MainScreenTest.h"

#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "report/RecentFiles.h"
#include "settings/MeasuringChoices.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QMenu>

namespace {

using namespace std::chrono_literals;

/// What stands beside the given flow of recording.
class RecordingChoices : public MainScreenTest {
protected:
    QString Line() { return Find<QLabel>(*form, "lblRecording").text(); }
    QString Counter() { return Find<QLabel>(*form, "lblRec").text(); }
    QAction& NewFile() { return Element<QAction>(*form, "mnuFileItem", frmMain::newFile); }

    std::filesystem::path RecordInto(const std::string& name) {
        const auto target = AnswerSaveDialog(name);
        Click(*form, "cmdPage", frmMain::run);
        return target;
    }

    static QWidget* ShownReport() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "Report" && window->isVisible())
                return window;
        return nullptr;
    }

    std::filesystem::path StartAutomatic() {
        Pick(*form, "cboAcqr", "Automatic");
        Type(*form, "txtTimer", "8");
        return RecordInto("spring-1.4ch");
    }

    void ReadSteadily(int count) {
        for (int i = 0; i < count; ++i) {
            platform.clock.monotonic += 500ms; // the pace of the page
            ReadFrame(frame);
        }
    }
};

} // namespace

TEST_F(RecordingChoices, The_line_tells_the_last_record_by_hand) {
    OpenReading();
    EXPECT_EQ(Line(), "");
    RecordInto("run.4ch");
    EXPECT_EQ(Line(), "Record 1 saved 14:05:33");
}

TEST_F(RecordingChoices, The_line_tells_an_automatic_run) {
    OpenReading();
    StartAutomatic();
    TimePasses(3s);
    EXPECT_EQ(Line(), "Recording to spring-1.4ch every 8 s: record 1 at 14:05:33, next in 5 s, "
                      "running 0:00:03");
}

TEST_F(RecordingChoices, A_run_that_waits_for_the_instrument_notes_the_gap_in_its_next_record) {
    OpenReading();
    Click(*form, "chkResume");
    const auto target = StartAutomatic();
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    EXPECT_EQ(RunButton(), "&Stop");
    TimePasses(8s);
    EXPECT_EQ(Counter(), "1") << "nothing is recorded without readings";
    platform.clock.now = {2003, 3, 7, 14, 7, 0};
    link->IntervalTicks();
    ReadFrame(frame);
    Type(*form, "txtComment", "stirred");
    TimePasses(8s);
    EXPECT_EQ(Counter(), "2");
    TimePasses(8s);
    EXPECT_EQ(Counter(), "3");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::switchPage);
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 3U);
    EXPECT_EQ(file.records[2].comment, "") << "it has been told";
    EXPECT_NE(file.records[1].comment.find("no readings from 14:05:33 to 14:07:00"),
              std::string::npos)
        << file.records[1].comment;
    EXPECT_NE(file.records[1].comment.find("stirred"), std::string::npos);
}

TEST_F(RecordingChoices, A_gap_that_was_given_up_is_no_part_of_the_next_run) {
    OpenReading();
    Click(*form, "chkResume");
    StartAutomatic();
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    Click(*form, "chkResume");
    Tick(*form, "tmrRead");
    ASSERT_EQ(RunButton(), "&Start");
    Click(*form, "cmdPage", frmMain::run);
    ReadFrame(frame);
    Click(*form, "cmdPage", frmMain::run);
    TimePasses(3s);
    EXPECT_TRUE(Line().contains("next in 5 s")) << Line().toStdString();
    EXPECT_FALSE(Line().contains("no readings")) << Line().toStdString();
}

TEST_F(RecordingChoices, A_new_file_takes_the_records_of_before_to_theirs_and_the_next_asks) {
    OpenReading();
    const auto first = RecordInto("first.4ch");
    Choose(*form, "mnuFileItem_0");
    EXPECT_EQ(FileOpr::ReadMeasurementFile(first).records.size(), 1U);
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition");
    EXPECT_EQ(Counter(), "0");
    const auto second = RecordInto("second.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(first).records.size(), 1U);
    ASSERT_EQ(FileOpr::ReadMeasurementFile(second).records.size(), 1U);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(second).records[0].number, 1);
}

TEST_F(RecordingChoices, There_is_no_new_file_during_an_automatic_run) {
    OpenReading();
    StartAutomatic();
    EXPECT_FALSE(NewFile().isEnabled());
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_TRUE(NewFile().isEnabled());
}

TEST_F(RecordingChoices, A_changed_setup_is_noticed_and_a_new_file_offered) {
    OpenReading();
    RecordInto("run.4ch");
    EXPECT_FALSE(Find<QLabel>(*form, "lblNotice").isVisible());
    Click(*form, "cmdPage", frmMain::switchPage);
    Type(*form, "txtEntry_4", "CA-2");
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    EXPECT_TRUE(Find<QLabel>(*form, "lblNotice").isVisible());
    EXPECT_TRUE(Find<QLabel>(*form, "lblNotice").text().contains("run.4ch"));
    EXPECT_EQ(Find<QLabel>(*form, "lblNotice").toolTip(), Find<QLabel>(*form, "lblNotice").text());
    Click(*form, "cmdNewFile");
    EXPECT_FALSE(Find<QLabel>(*form, "lblNotice").isVisible());
    EXPECT_TRUE(run->targetFile.empty());
}

TEST_F(RecordingChoices, The_notice_begins_no_new_file_during_an_automatic_run) {
    OpenReading();
    RecordInto("run.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    Type(*form, "txtEntry_4", "CA-2");
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    Pick(*form, "cboAcqr", "Automatic");
    Click(*form, "cmdPage", frmMain::run);
    auto& button = Find<QPushButton>(*form, "cmdNewFile");
    EXPECT_TRUE(button.isVisible());
    EXPECT_FALSE(button.isEnabled());
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_TRUE(button.isEnabled());
}

TEST_F(RecordingChoices, A_record_waits_until_all_channels_are_steady) {
    OpenReading();
    Click(*form, "chkSteady");
    RecordInto("run.4ch"); // the file is asked for while the analyst is there
    EXPECT_EQ(Counter(), "0");
    EXPECT_TRUE(Line().startsWith("Waiting until all channels are steady")) << Line().toStdString();
    ReadSteadily(26);
    EXPECT_EQ(Counter(), "0");
    ReadSteadily(1);
    EXPECT_EQ(Counter(), "1");
    ReadSteadily(1);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingChoices, A_press_without_a_file_waits_for_nothing) {
    OpenReading();
    Click(*form, "chkSteady");
    platform.dialogs.ExpectFileDialog(
        [](const platform::FileDialogRequest&) { return std::nullopt; });
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Line(), "");
    ReadSteadily(27);
    EXPECT_EQ(Counter(), "0");
}

TEST_F(RecordingChoices, A_press_waits_for_nothing_when_the_link_fails_while_the_file_is_chosen) {
    OpenReading();
    Click(*form, "chkSteady");
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        link->IntervalTicks();
        TimeOut();
        return platform.folder.Path() / "run.4ch";
    });
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Line(), "");
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    Tick(*form, "tmrRead");
    Click(*form, "cmdPage", frmMain::run);
    ReadSteadily(27);
    EXPECT_EQ(Counter(), "0") << "no record by itself";
}

TEST_F(RecordingChoices, A_press_that_waits_for_steady_readings_starts_no_run) {
    OpenReading();
    Click(*form, "chkSteady");
    RecordInto("run.4ch");
    Pick(*form, "cboAcqr", "Automatic");
    EXPECT_EQ(Line(), "") << "another mode takes the press back";
    ReadSteadily(27);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_EQ(Counter(), "0");
}

TEST_F(RecordingChoices, A_press_waits_no_longer_when_that_is_not_chosen_any_more) {
    OpenReading();
    Click(*form, "chkSteady");
    RecordInto("run.4ch");
    Click(*form, "chkSteady");
    EXPECT_EQ(Line(), "");
    ReadSteadily(27);
    EXPECT_EQ(Counter(), "0");
}

TEST_F(RecordingChoices, A_new_file_takes_back_a_press_that_waits) {
    OpenReading();
    RecordInto("run.4ch");
    Click(*form, "chkSteady");
    Click(*form, "cmdPage", frmMain::run);
    Choose(*form, "mnuFileItem_0");
    ReadSteadily(27);
    EXPECT_EQ(Counter(), "0") << "no save dialog comes by itself";
}

TEST_F(RecordingChoices, A_second_press_records_at_once) {
    OpenReading();
    Click(*form, "chkSteady");
    RecordInto("run.4ch");
    EXPECT_EQ(Counter(), "0");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(Counter(), "1");
}

TEST_F(RecordingChoices, Mode_period_choices_comments_and_window_size_are_remembered) {
    OpenReading();
    Type(*form, "txtComment", "stirred");
    RecordInto("run.4ch");
    Pick(*form, "cboAcqr", "Automatic");
    Type(*form, "txtTimer", "8");
    Click(*form, "chkSteady");
    Click(*form, "chkResume");
    form->resize(700, 600);
    platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292, platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    form.reset();
    run.reset();
    Open();
    EXPECT_EQ(form->size(), QSize(700, 600));
    EXPECT_EQ(Find<QComboBox>(*form, "cboAcqr").currentText(), "Automatic");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtTimer").text(), "8");
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkSteady").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkResume").isChecked());
    const auto* offered = Find<QLineEdit>(*form, "txtComment").completer();
    ASSERT_NE(offered, nullptr);
    EXPECT_EQ(offered->model()->index(0, 0).data().toString(), "stirred");
}

TEST_F(RecordingChoices, An_emptied_period_leaves_the_one_before_it_remembered) {
    const auto leaveWith = [this](const char* period) {
        OpenMeasuring();
        Type(*form, "txtTimer", period);
        platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292,
                                       platform::button::yes);
        Click(*form, "cmdPage", frmMain::leave);
        form.reset();
        run.reset();
        return mWinInit::LoadMeasuringChoices().period;
    };
    EXPECT_EQ(leaveWith("8"), "8");
    EXPECT_EQ(leaveWith(""), "8");
}

TEST_F(RecordingChoices, Without_a_choice_everything_is_as_it_was_designed) {
    OpenMeasuring();
    EXPECT_EQ(Find<QComboBox>(*form, "cboAcqr").currentText(), "Manual");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtTimer").text(), "1");
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkSteady").isChecked());
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkResume").isChecked());
}

TEST_F(RecordingChoices, A_file_that_was_viewed_last_is_opened_from_the_menu_once_more) {
    OpenReading();
    const auto target = RecordInto("run.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    auto& recent = Find<QMenu>(*form, "mnuRecent");
    Q_EMIT recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 1);
    EXPECT_FALSE(recent.actions()[0]->isEnabled()) << "none was viewed";
    RecentFiles::Add(target);
    Q_EMIT recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 1);
    recent.actions()[0]->trigger();
    QWidget* report = ShownReport();
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->windowTitle().contains("run.4ch"));
}

TEST_F(RecordingChoices, A_recent_file_that_is_gone_is_said_and_offered_no_more) {
    Open();
    RecentFiles::Add(platform.folder.Path() / "gone.4ch");
    auto& recent = Find<QMenu>(*form, "mnuRecent");
    Q_EMIT recent.aboutToShow();
    platform.dialogs.ExpectAnyMessage(critical);
    recent.actions()[0]->trigger();
    EXPECT_EQ(RecentFiles::List(), std::vector<std::filesystem::path>());
}

TEST_F(RecordingChoices, A_report_can_be_opened_from_the_setup_page) {
    OpenReading();
    const auto target = RecordInto("run.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    Choose(*form, "mnuFileItem_0");
    platform.dialogs.ExpectFileDialog([&target](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.kind, platform::FileDialogRequest::Kind::open);
        return target;
    });
    Choose(*form, "mnuFileItem_1");
    QWidget* report = ShownReport();
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->windowTitle().contains("run.4ch"));
}
