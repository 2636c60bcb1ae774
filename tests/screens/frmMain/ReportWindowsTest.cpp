#include "screens/frmMain/MainScreenTest.h"

#include "files/MeasurementReader.h"
#include "report/support/MeasurementText.h"
#include "screens/Report/Report.h"
#include "screens/Report/WholeRunPanel.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTabBar>

namespace {

using namespace std::chrono_literals;

class ReportWindowsTest : public MainScreenTest {
protected:
    std::filesystem::path File(const std::string& name) const {
        return platform.folder.Path() / name;
    }

    /// The open viewer of this file; nullptr where there is none.
    static QPointer<Report> Viewer(const std::filesystem::path& file) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* report = qobject_cast<Report*>(window);
                report != nullptr && report->isVisible() && report->File().path == file)
                return report;
        return nullptr;
    }
    static std::int32_t LastRecord(const Report& report) {
        return Mreport::PageRecordRange(report.File().pages, 0).lastRecord.number;
    }

    /// Records once by hand and opens the report on it.
    QPointer<Report> OpenFirst() {
        OpenReading();
        const auto target = AnswerSaveDialog("run.4ch");
        Click(*form, "cmdPage", frmMain::run);
        Click(*form, "cmdPage", frmMain::report);
        return Viewer(target);
    }
    QPointer<Report> OpenBeside(Report& origin, const std::string& name) {
        platform.dialogs.ExpectFileDialog(
            [this, name](const platform::FileDialogRequest&) { return File(name); });
        Choose(origin, QString("mnuFileItem_%1").arg(ReportMenus::openInNewWindow));
        Settle();
        return Viewer(File(name));
    }
    void StartAutomatic() {
        Pick(*form, "cboAcqr", "Automatic");
        Type(*form, "txtTimer", "1");
        Click(*form, "cmdPage", frmMain::run);
    }
};

} // namespace

TEST_F(ReportWindowsTest, A_file_opens_in_a_window_of_its_own_beside_the_first) {
    WriteBytes(File("old.4ch"), MeasurementText().File(120));
    const auto first = OpenFirst();
    ASSERT_TRUE(first);
    const auto second = OpenBeside(*first, "old.4ch");
    ASSERT_TRUE(second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->File().path, File("run.4ch"));
    EXPECT_EQ(LastRecord(*first), 1);
    EXPECT_EQ(LastRecord(*second), 120);
    EXPECT_NE(first->pos(), second->pos()) << "one lies not over the other";
    Find<QScrollBar>(*second, "HScroll").setValue(90);
    Find<QTabBar>(*first, "TabStrip").setCurrentIndex(ReportViews::tableTab);
    EXPECT_EQ(Find<QTabBar>(*second, "TabStrip").currentIndex(), ReportViews::graphTab);
}

TEST_F(ReportWindowsTest, A_window_that_is_closed_leaves_the_other) {
    WriteBytes(File("old.4ch"), MeasurementText().File(120));
    const auto first = OpenFirst();
    QPointer<Report> second = OpenBeside(*first, "old.4ch");
    first->close();
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(LastRecord(*second), 120);
    Click(*form, "cmdPage", frmMain::report);
    ASSERT_TRUE(Viewer(File("run.4ch")));
    second->close();
    Settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(second) << "it is gone, and its file is free";
    EXPECT_EQ(LastRecord(*Viewer(File("run.4ch"))), 1);
}

TEST_F(ReportWindowsTest, Each_window_that_shows_the_run_follows_it) {
    const auto first = OpenFirst();
    const auto target = File("run.4ch");
    WriteBytes(File("old.4ch"), MeasurementText().File(20));
    const auto second = OpenBeside(*first, "old.4ch");
    StartAutomatic();
    EXPECT_TRUE(run->IsFollowing());
    TimePasses(1s);
    EXPECT_EQ(LastRecord(*first), 3);
    EXPECT_EQ(LastRecord(*second), 20) << "it shows another file";
    second->ViewFile(target);
    EXPECT_EQ(LastRecord(*second), 3);
    TimePasses(1s);
    EXPECT_EQ(LastRecord(*first), 4);
    EXPECT_EQ(LastRecord(*second), 4);
}

TEST_F(ReportWindowsTest, Records_go_to_the_target_until_the_last_window_on_it_is_closed) {
    const auto first = OpenFirst();
    const auto target = File("run.4ch");
    WriteBytes(File("old.4ch"), MeasurementText().File(20));
    const auto second = OpenBeside(*first, "old.4ch");
    second->ViewFile(target);
    StartAutomatic();
    first->close();
    EXPECT_TRUE(run->IsFollowing()) << "the second still shows it";
    TimePasses(1s);
    EXPECT_EQ(LastRecord(*second), 3);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 3U);
    second->ViewFile(File("old.4ch"));
    EXPECT_FALSE(run->IsFollowing());
    TimePasses(1s);
    EXPECT_EQ(FileOpr::ReadMeasurementFile(target).records.size(), 3U);
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::switchPage);
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 4U);
    EXPECT_EQ(file.records[3].number, 4) << "in the order of recording";
}

TEST_F(ReportWindowsTest, The_overview_of_each_window_grows_with_the_run) {
    const auto first = OpenFirst();
    WriteBytes(File("old.4ch"), MeasurementText().File(20));
    const auto second = OpenBeside(*first, "old.4ch");
    second->ViewFile(File("run.4ch"));
    StartAutomatic();
    for (int second_s = 0; second_s < 5; ++second_s)
        TimePasses(1s);
    for (const auto& window : {first, second}) {
        const auto& panel = Find<WholeRunPanel>(*window, "picWholeRun");
        while (!panel.Complete())
            QApplication::processEvents();
        EXPECT_EQ(panel.Overview().Span().Count(), 7);
        EXPECT_EQ(panel.Overview().Share(), 1);
        EXPECT_TRUE(panel.Overview().RangeOf(0, panel.Overview().Span()).Any());
    }
}

TEST_F(ReportWindowsTest, The_update_of_each_window_ends_with_the_run) {
    const auto first = OpenFirst();
    WriteBytes(File("old.4ch"), MeasurementText().File(20));
    const auto second = OpenBeside(*first, "old.4ch");
    StartAutomatic();
    second->ViewFile(File("run.4ch"));
    const QString automatic = QString("mnuUpdateItem_%1").arg(ReportMenus::automaticUpdate);
    Choose(*second, automatic);
    EXPECT_TRUE(second->Shown().autoUpdate);
    EXPECT_FALSE(first->Shown().autoUpdate) << "each has its own";
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_FALSE(second->Shown().autoUpdate);
    EXPECT_FALSE(Find<QAction>(*second, automatic).isEnabled());
}

TEST_F(ReportWindowsTest, The_exit_closes_them_all_after_its_one_question) {
    const auto first = OpenFirst();
    WriteBytes(File("old.4ch"), MeasurementText().File(20));
    const auto second = OpenBeside(*first, "old.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292, platform::button::yes);
    Click(*form, "cmdPage", frmMain::leave);
    Settle();
    EXPECT_FALSE(Viewer(File("old.4ch")));
    EXPECT_FALSE(Viewer(File("run.4ch")));
    EXPECT_FALSE(form->isVisible());
}

TEST_F(ReportWindowsTest, No_window_closes_while_one_of_them_loads) {
    const auto first = OpenFirst();
    WriteBytes(File("old.4ch"), MeasurementText().File(3000));
    const auto second = OpenBeside(*first, "old.4ch");
    Click(*form, "cmdPage", frmMain::switchPage);
    platform.clock.step = 1ms; // events run wherever they may
    platform.desktop.onEvents = [this, passes = 0]() mutable {
        if (++passes != 20)
            return;
        platform.dialogs.ExpectMessage("Are you sure you want to exit?", 292,
                                       platform::button::yes);
        platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
        Click(*form, "cmdPage", frmMain::leave);
    };
    second->ViewFile(File("old.4ch"));
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(Viewer(File("run.4ch")));
    EXPECT_EQ(LastRecord(*second), 3000);
}

TEST_F(ReportWindowsTest, A_dialog_that_is_cancelled_opens_no_window) {
    const auto first = OpenFirst();
    const auto windows = [] { return QApplication::topLevelWidgets().size(); };
    const auto before = windows();
    platform.dialogs.ExpectFileDialog(
        [](const platform::FileDialogRequest&) { return std::nullopt; });
    Choose(*first, QString("mnuFileItem_%1").arg(ReportMenus::openInNewWindow));
    EXPECT_EQ(windows(), before);
}
