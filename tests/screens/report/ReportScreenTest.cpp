#include "screens/report/ReportScreen.h"

#include "files/FileOpr.h"
#include "screens/frmSrch/frmSrch.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <qcustomplot.h>

namespace {

constexpr int recordsOfFirstPage = 4086;

std::vector<QString> Texts(const QTabBar& bar) {
    std::vector<QString> texts;
    for (int tab = 0; tab < bar.count(); ++tab)
        texts.push_back(bar.tabText(tab));
    return texts;
}

} // namespace

TEST_F(ReportScreen, A_file_shows_its_caption_header_lines_and_graph) {
    View(MeasurementText().File(60));
    EXPECT_EQ(form->windowTitle(), "Report - " + QString::fromStdString(File().string()));
    EXPECT_TRUE(
        Find<QPlainTextEdit>(*form, "txtHead").toPlainText().startsWith("Project Name: River"));
    EXPECT_EQ(Status(), "Ready");
    EXPECT_TRUE(Find<QWidget>(*form, "picMode").isHidden());
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_EQ(Graph().LeftTitle(), "mV");
    EXPECT_EQ(Graph().NumPoints(), 50);
    EXPECT_EQ(Graph().DataGetAmp(1, 1), 1.0);
    EXPECT_EQ(Scroll().minimum(), 50);
    EXPECT_EQ(Scroll().maximum(), 60);
}

TEST_F(ReportScreen, The_table_view_shows_the_lines_in_lists_with_tabs) {
    View(MeasurementText().File(recordsOfFirstPage + 3));
    auto& views = Find<QTabBar>(*form, "TabStrip");
    EXPECT_EQ(Texts(views), (std::vector<QString>{"&Graph", "&Table"}));
    views.setCurrentIndex(1);
    EXPECT_TRUE(Find<QWidget>(*form, "picMode").isVisible());
    EXPECT_FALSE(Graph().isVisible());
    auto& pages = Find<QTabBar>(*form, "Pages");
    EXPECT_EQ(Texts(pages), (std::vector<QString>{"List &1", "List &2"}));
    EXPECT_EQ(List(0).LineCount(), 32700);
    EXPECT_EQ(List(0).LineText(0), QString(200, '-'));
    pages.setCurrentIndex(1);
    EXPECT_TRUE(List(1).isVisible());
    EXPECT_EQ(List(1).LineText(0), "Record 4087\tAt\t14:05:33 07.Mar.2003");
    EXPECT_EQ(Shown().shownPageIndex, 1);
}

TEST_F(ReportScreen, Another_list_page_brings_its_records_into_the_graph) {
    View(MeasurementText().File(recordsOfFirstPage + 60));
    Find<QTabBar>(*form, "Pages").setCurrentIndex(1);
    EXPECT_EQ(Shown().graphPageIndex, 1);
    EXPECT_EQ(Range().pageFirstRecordOffset, recordsOfFirstPage);
    EXPECT_EQ(Scroll().maximum(), 60);
    EXPECT_EQ(Graph().DataGetAmp(1, 1), 4087.0);
}

TEST_F(ReportScreen, The_scroll_bar_moves_the_span) {
    View(MeasurementText().File(120));
    Scroll().setValue(120);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), 120.0);
    EXPECT_EQ(Graph().DataGetAmp(1, 1), 71.0);
}

TEST_F(ReportScreen, Dragging_the_thumb_tells_the_end_record_in_the_caption) {
    View(MeasurementText().File(120));
    const QString caption = form->windowTitle();
    Scroll().setSliderDown(true);
    Scroll().setSliderPosition(80);
    EXPECT_EQ(form->windowTitle(), caption + " [End With Record 80]");
    Scroll().setSliderDown(false);
    EXPECT_EQ(form->windowTitle(), caption);
}

TEST_F(ReportScreen, Escape_stops_a_load_and_a_second_file_is_refused_meanwhile) {
    platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
    int passes = 0;
    platform.desktop.onEvents = [&] {
        ++passes;
        if (passes == 20) {
            EXPECT_TRUE(Status().startsWith("Loading data, ")) << Status().toStdString();
            EXPECT_FALSE(form->close());
        }
        if (passes == 21)
            QTest::keyClick(form.get(), Qt::Key_Escape);
        QCoreApplication::processEvents();
    };
    View(MeasurementText().File(4000));
    EXPECT_EQ(Status(), "Ready");
    EXPECT_TRUE(form->isVisible());
    EXPECT_LT(Range().recordsInPage, 400);
    EXPECT_TRUE(form->IsIdle());
}

TEST_F(ReportScreen, Escape_reaches_the_load_from_every_control) {
    for (const char* name : {"txtHead", "TabStrip", "HScroll", "graReport", "txtInfo"}) {
        auto& control = Find<QWidget>(*form, name);
        int passes = 0;
        platform.desktop.onEvents = [&] {
            if (++passes == 20)
                QTest::keyClick(&control, Qt::Key_Escape);
            QCoreApplication::processEvents();
        };
        View(MeasurementText().File(1000));
        EXPECT_LT(Range().recordsInPage, 1000) << name;
    }
}

TEST_F(ReportScreen, Selecting_channels_and_printing_wait_for_the_end_of_a_load) {
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Cannot choose this option while data is loading.",
                                       information);
        Find<QAction>(*form, "mnuViewItem_0").setEnabled(true);
        Choose(*form, "mnuViewItem_0");
        platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
        Choose(*form, "mnuFileItem_0");
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(Range().recordsInPage, 500);
}

TEST_F(ReportScreen, Opening_goes_through_the_file_dialog) {
    WriteBytes(File("other.4ch"), MeasurementText().File(5));
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.title, "Open File");
        return std::optional(File("other.4ch"));
    });
    Choose(*form, "mnuFileItem_0");
    EXPECT_EQ(Range().recordsInPage, 5);
    EXPECT_EQ(Viewed().path, File("other.4ch"));
}

TEST_F(ReportScreen, A_file_that_cannot_be_opened_is_said_and_the_old_one_stays) {
    View(MeasurementText().File(5));
    platform.dialogs.ExpectMessage(
        "Unexpected error - Opening gone.4ch: File not found\nError location - Report - ViewFile",
        critical);
    form->ViewFile(File("gone.4ch"));
    EXPECT_EQ(Viewed().path, File());
    EXPECT_EQ(List(0).LineCount(), 12 + 40);
}

TEST_F(ReportScreen, Recent_files_are_offered_newest_first) {
    View(MeasurementText().File(1), "one.4ch");
    View(MeasurementText().File(2), "two&2.4ch");
    auto& menu = Find<QMenu>(*form, "mnuRecent");
    Q_EMIT menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_TRUE(menu.actions()[0]->text().endsWith("two&&2.4ch"));
    menu.actions()[1]->trigger();
    EXPECT_EQ(Range().recordsInPage, 1);
}

TEST_F(ReportScreen, The_menus_offer_what_the_shown_file_allows) {
    EXPECT_FALSE(Find<QAction>(*form, "mnuFileItem_1").isEnabled()) << "nothing to print yet";
    View(MeasurementText().File(5));
    EXPECT_TRUE(Find<QAction>(*form, "mnuViewItem_0").isEnabled());
    EXPECT_FALSE(Find<QAction>(*form, "mnuUpdateItem_0").isEnabled());
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(5));
    EXPECT_FALSE(Find<QAction>(*form, "mnuViewItem_0").isEnabled());
    EXPECT_TRUE(Find<QAction>(*form, "mnuUpdateItem_0").isEnabled());
    form->SetUpdateEnabled(false);
    EXPECT_FALSE(Find<QAction>(*form, "mnuUpdateItem_0").isEnabled());
}

TEST_F(ReportScreen, Calculator_notepad_and_help_are_the_desktops) {
    EXPECT_EQ(Find<QAction>(*form, "mnuToolItem_0").text(), "Calculator");
    Choose(*form, "mnuToolItem_0");
    Choose(*form, "mnuToolItem_1");
    Choose(*form, "mnuHelp");
    EXPECT_EQ(platform.desktop.calculatorShown, 1);
    EXPECT_EQ(platform.desktop.notepadShown, 1);
    EXPECT_EQ(platform.desktop.helpShown, (std::vector<std::filesystem::path>{
                                              platform.places.ProgramFolder() / "ViewHlp.txt"}));
}

TEST_F(ReportScreen, A_live_file_is_updated_by_hand) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Append(MeasurementText().Record(61));
    platform.dialogs.ExpectMessage("The list has been updated.", information);
    Choose(*form, "mnuUpdateItem_0");
    EXPECT_EQ(Scroll().value(), 61);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), 61.0);
}

TEST_F(ReportScreen, Automatic_update_hides_the_scroll_bar_until_the_run_ends) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Choose(*form, "mnuUpdateItem_1");
    EXPECT_TRUE(Shown().autoUpdate);
    EXPECT_FALSE(Scroll().isVisible());
    EXPECT_EQ(Graph().DataGetAmp(1, 10), 60.0) << "the block of 50 that began with record 51";
    form->SetUpdateEnabled(false);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_TRUE(Scroll().isVisible());
    EXPECT_FALSE(Find<QAction>(*form, "mnuUpdateItem_1").isChecked());
}

TEST_F(ReportScreen, The_file_is_no_longer_live_when_the_measuring_page_is_left) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(60));
    Choose(*form, "mnuUpdateItem_1");
    run.measuring = false;
    QWidget other;
    Show(other);
    Show(*form);
    EXPECT_FALSE(Viewed().viewingLiveFile);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_TRUE(Find<QAction>(*form, "mnuViewItem_0").isEnabled());
    run.measuring = true;
    Show(other);
    Show(*form);
    EXPECT_TRUE(Find<QAction>(*form, "mnuUpdateItem_0").isEnabled());
}

TEST_F(ReportScreen, A_list_chosen_during_automatic_update_leaves_the_live_graph) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(recordsOfFirstPage + 10));
    Choose(*form, "mnuUpdateItem_1");
    EXPECT_EQ(Shown().graphPageIndex, 1);
    Find<QTabBar>(*form, "Pages").setCurrentIndex(0);
    EXPECT_EQ(Shown().shownPageIndex, 0);
    EXPECT_EQ(Shown().graphPageIndex, 1);
}

TEST_F(ReportScreen, Opening_a_file_resets_update_and_view) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Choose(*form, "mnuUpdateItem_1");
    Choose(*form, "mnuViewItem_2");
    EXPECT_TRUE(Find<QWidget>(*form, "picMode").isVisible());
    View(MeasurementText().File(3), "other.4ch");
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_FALSE(Find<QAction>(*form, "mnuUpdateItem_1").isChecked());
    EXPECT_TRUE(Find<QAction>(*form, "mnuViewItem_1").isChecked());
    EXPECT_FALSE(Find<QAction>(*form, "mnuViewItem_2").isChecked());
    EXPECT_TRUE(Scroll().isVisible());
}

TEST_F(ReportScreen, Closing_frees_the_file_and_remembers_the_place) {
    int closed = 0;
    QObject::connect(form.get(), &Report::Closed, form.get(), [&closed] { ++closed; });
    View(MeasurementText().File(3));
    form->move(40, 50);
    Choose(*form, "mnuBack");
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(Viewed().path.empty());
    EXPECT_EQ(platform.userStore.values.at("Report/Window/Left"), "40");
    EXPECT_EQ(platform.userStore.values.at("Report/Window/Top"), "50");
}

TEST_F(ReportScreen, Lines_are_copied_as_they_are_shown) {
    View(MeasurementText().File(2));
    Choose(*form, "mnuViewItem_2");
    List(0).SetCurrentLine(12);
    QTest::keyClick(&List(0), Qt::Key_Down, Qt::ShiftModifier);
    Choose(*form, "mnuToolItem_3");
    EXPECT_EQ(QApplication::clipboard()->text(),
              "Record 1\tAt\t14:05:33 07.Mar.2003\nComment:\t\n");
}

TEST_F(ReportScreen, A_found_record_is_brought_into_the_list) {
    View(MeasurementText().File(recordsOfFirstPage + 3));
    Choose(*form, "mnuViewItem_2");
    Choose(*form, "mnuToolItem_2");
    auto& search = Find<frmSrch>(*form, "frmSrch");
    EXPECT_TRUE(search.isVisible());
    Type(search, "txtEntry", "4088");
    QTest::keyClick(&Find<QWidget>(search, "txtEntry"), Qt::Key_Return);
    EXPECT_EQ(Shown().shownPageIndex, 1);
    EXPECT_EQ(List(1).CurrentLine(), 8);
}

TEST_F(ReportScreen, Records_and_graph_are_exported) {
    View(MeasurementText().File(3));
    for (const char* name : {"out.csv", "graph.png", "graph.svg", "graph.pdf"}) {
        platform.dialogs.ExpectFileDialog(
            [this, name](const platform::FileDialogRequest&) { return std::optional(File(name)); });
        Choose(*form, std::string(name) == "out.csv" ? "mnuFileItem_2" : "mnuFileItem_3");
    }
    EXPECT_EQ(ReadBytes(File("out.csv")).substr(0, 20), "Record,Time,Comment,");
    EXPECT_EQ(ReadBytes(File("graph.png")).substr(1, 3), "PNG");
    EXPECT_NE(ReadBytes(File("graph.svg")).find("Ch. 1"), std::string::npos);
    EXPECT_EQ(ReadBytes(File("graph.pdf")).substr(0, 5), "%PDF-");
    EXPECT_EQ(Status(), "Ready: graph exported");
}

TEST_F(ReportScreen, A_file_that_shrinks_is_said_in_the_status) {
    View(MeasurementText().File(120));
    std::filesystem::resize_file(File(), 100);
    Scroll().setValue(120);
    EXPECT_EQ(Status(),
              "The file has become shorter since it was loaded; what is gone is shown blank.");
}

TEST_F(ReportScreen, A_click_on_a_point_tells_channel_record_and_value) {
    View(MeasurementText().File(120));
    Scroll().setValue(120);
    platform.dialogs.ExpectMessage("Chan. 1, Record 71, Value =71.00", information);
    Q_EMIT Graph().PointClicked(1, 1);
    Q_EMIT Graph().PointHovered(2, 50);
    EXPECT_EQ(Find<QLineEdit>(*form, "txtInfo").text(), "Chan. 2, Record 120, Value =120.10");
}

TEST_F(ReportScreen, Every_control_has_a_name_and_no_mnemonic_is_shared) {
    View(MeasurementText().File(3));
    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>{});
    ExpectFitsAtDoubleScale(*form);
}

TEST_F(ReportScreen, Automatic_update_waits_for_the_end_of_a_load) {
    run.measuring = true;
    run.targetFile = File();
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Cannot choose this option while data is loading.",
                                       information);
        Find<QAction>(*form, "mnuUpdateItem_1").trigger();
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 500);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_FALSE(Find<QAction>(*form, "mnuUpdateItem_1").isChecked());
}

TEST_F(ReportScreen, A_recent_file_chosen_during_a_load_is_refused_once) {
    View(MeasurementText().File(1), "one.4ch");
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
        auto& menu = Find<QMenu>(*form, "mnuRecent");
        Q_EMIT menu.aboutToShow();
        menu.actions().last()->trigger();
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(Range().recordsInPage, 500);
}

TEST_F(ReportScreen, A_search_forgets_what_it_found_when_another_file_is_opened) {
    View(MeasurementText().File(20));
    Choose(*form, "mnuToolItem_2");
    const auto& search = Find<QWidget>(*form, "frmSrch");
    Type(search, "txtEntry", "12");
    QTest::keyClick(&Find<QLineEdit>(search, "txtEntry"), Qt::Key_Return);
    ASSERT_TRUE(Find<QComboBox>(search, "cboChan").isEnabled());
    View(MeasurementText().File(5), "short.4ch");
    EXPECT_FALSE(Find<QComboBox>(search, "cboChan").isEnabled());
    EXPECT_EQ(Find<QLabel>(search, "lblRtn").text(), "");
    QTest::keyClick(&Find<QLineEdit>(search, "txtEntry"), Qt::Key_Return);
    EXPECT_EQ(Find<QLabel>(search, "lblStatus").text(), "Not Found");
    EXPECT_FALSE(Find<QComboBox>(search, "cboChan").isEnabled());
}

TEST_F(ReportScreen, Records_that_a_flush_brings_reach_the_open_viewer) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(60));
    run.measuring = false; // the measuring page has been left
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 61);
    EXPECT_EQ(Scroll().maximum(), 61);
    EXPECT_FALSE(Viewed().viewingLiveFile);
}

TEST_F(ReportScreen, A_long_run_that_a_flush_brings_is_read_when_the_flush_has_ended) {
    run.targetFile = File();
    View(MeasurementText().File(60));
    std::string more;
    for (int record = 61; record <= 1000; ++record)
        more += MeasurementText().Record(record);
    Append(more);
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 60);
    Settle();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 1000);
    EXPECT_EQ(Scroll().maximum(), 1000);
}

TEST_F(ReportScreen, A_viewer_used_on_the_setup_page_follows_the_next_run_into_its_file) {
    run.targetFile = File();
    View(MeasurementText().File(60));
    EXPECT_FALSE(Viewed().viewingLiveFile);
    run.measuring = true;
    run.FollowTarget(true);
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 61);
    EXPECT_TRUE(Viewed().viewingLiveFile);
    EXPECT_TRUE(Find<QAction>(*form, "mnuUpdateItem_1").isEnabled());
}

TEST_F(ReportScreen, A_record_of_another_file_is_no_matter_of_the_viewer) {
    run.measuring = true;
    run.targetFile = File("other.4ch");
    View(MeasurementText().File(60));
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 60);
}

TEST_F(ReportScreen, A_failed_open_leaves_the_search_as_it_was) {
    View(MeasurementText().File(20));
    Choose(*form, "mnuToolItem_2");
    const auto& search = Find<QWidget>(*form, "frmSrch");
    Type(search, "txtEntry", "12");
    QTest::keyClick(&Find<QLineEdit>(search, "txtEntry"), Qt::Key_Return);
    const QString found = Find<QLabel>(search, "lblRtn").text();
    ASSERT_FALSE(found.isEmpty());
    platform.dialogs.ExpectAnyMessage(critical);
    form->ViewFile(File("gone.4ch"));
    EXPECT_EQ(Find<QLabel>(search, "lblRtn").text(), found);
    EXPECT_TRUE(Find<QComboBox>(search, "cboChan").isEnabled());
}

TEST_F(ReportScreen, The_selection_waits_for_the_end_of_an_automatic_run_and_says_so) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(5));
    const auto& item = Find<QAction>(*form, "mnuViewItem_0");
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.toolTip(), "Not while records are written into this file");
    EXPECT_TRUE(Find<QMenu>(*form, "mnuView").toolTipsVisible());
    form->SetUpdateEnabled(false);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_NE(item.toolTip(), "Not while records are written into this file");
}

TEST_F(ReportScreen, A_found_record_is_shown_whole_and_the_graph_goes_along) {
    View(MeasurementText().File(500));
    Choose(*form, "mnuViewItem_2");
    Choose(*form, "mnuToolItem_2");
    auto& search = Find<frmSrch>(*form, "frmSrch");
    Type(search, "txtEntry", "300");
    QTest::keyClick(&Find<QWidget>(search, "txtEntry"), Qt::Key_Return);
    const int line = 12 + 8 * 299;
    const QScrollBar& bar = *List(0).verticalScrollBar();
    EXPECT_EQ(List(0).CurrentLine(), line);
    EXPECT_LE(bar.value(), line);
    EXPECT_GE(bar.value() + bar.pageStep(), line + 8);
    EXPECT_EQ(Scroll().value(), 325);
    EXPECT_EQ(Graph().DataGetAmp(1, 25), 300.0);
    Type(search, "txtEntry", "280");
    QTest::keyClick(&Find<QWidget>(search, "txtEntry"), Qt::Key_Return);
    EXPECT_EQ(Scroll().value(), 325) << "the graph shows it already";
}

TEST_F(ReportScreen, The_status_tells_of_the_last_export) {
    View(MeasurementText().File(3));
    const auto exportAs = [this](const char* name, const char* item, std::size_t filter) {
        platform.dialogs.ExpectFileDialog(
            [this, name, filter](const platform::FileDialogRequest& request) {
                if (request.chosenFilter != nullptr)
                    *request.chosenFilter = filter;
                return std::optional(File(name));
            });
        Choose(*form, item);
    };
    exportAs("out.csv", "mnuFileItem_2", 1);
    EXPECT_EQ(Status(), "Ready: 3 records exported");
    EXPECT_EQ(ReadBytes(File("out.csv")).substr(0, 9), "\xEF\xBB\xBFRecord");
    exportAs("graph.png", "mnuFileItem_3", 0);
    EXPECT_EQ(Status(), "Ready: graph exported");
    platform.dialogs.ExpectAnyMessage(critical);
    exportAs("no/out.csv", "mnuFileItem_2", 0);
    EXPECT_EQ(Status(), "Ready");
}

TEST_F(ReportScreen, The_header_box_shows_whole_lines_above_its_scroll_bar) {
    MeasurementText text;
    text.electrodes = {"Ca", "Cl", "K", "Na", "F", "I", "Br", "Ag"};
    text.sensors = std::vector<std::string>(8, "1");
    form->resize(700, 600);
    View(text.File(3), "run.8ch");
    const auto& head = Find<QPlainTextEdit>(*form, "txtHead");
    ASSERT_TRUE(head.horizontalScrollBar()->isVisible());
    const double margins = 2 * head.document()->documentMargin();
    EXPECT_GE(head.viewport()->height() - margins, 4 * QFontMetrics(head.font()).lineSpacing());
}

TEST_F(ReportScreen, An_empty_graph_says_why) {
    View(MeasurementText().Header());
    const auto* text = Graph().findChild<QCPItemText*>();
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->visible());
    EXPECT_EQ(text->text(), "There is no record to show yet.");
    View(MeasurementText().File(3));
    EXPECT_FALSE(text->visible());
}
