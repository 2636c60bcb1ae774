#include "screens/report/ReportScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
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
    EXPECT_EQ(Texts(views), (std::vector<QString>{"&Graph", "&Table", "&Records"}));
    views.setCurrentIndex(ReportViews::tableTab);
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

TEST_F(ReportScreen, The_menus_offer_what_the_shown_file_allows) {
    EXPECT_FALSE(Item(ReportMenus::printReport).isEnabled()) << "nothing to print yet";
    View(MeasurementText().File(5));
    EXPECT_TRUE(Item(ReportMenus::selectChannels).isEnabled());
    EXPECT_FALSE(Item(ReportMenus::updateList).isEnabled());
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(5));
    EXPECT_FALSE(Item(ReportMenus::selectChannels).isEnabled());
    EXPECT_TRUE(Item(ReportMenus::updateList).isEnabled());
    form->SetUpdateEnabled(false);
    EXPECT_FALSE(Item(ReportMenus::updateList).isEnabled());
}

TEST_F(ReportScreen, Calculator_notepad_and_help_are_the_desktops) {
    EXPECT_EQ(Item(ReportMenus::calculator).text(), "Calculator");
    Choose(ReportMenus::calculator);
    Choose(ReportMenus::notepad);
    Choose(*form, "mnuHelp");
    EXPECT_EQ(platform.desktop.calculatorShown, 1);
    EXPECT_EQ(platform.desktop.notepadShown, 1);
    EXPECT_EQ(platform.desktop.helpShown, (std::vector<std::filesystem::path>{
                                              platform.places.ProgramFolder() / "ViewHlp.txt"}));
}

TEST_F(ReportScreen, Lines_are_copied_as_they_are_shown) {
    View(MeasurementText().File(2));
    Choose(ReportMenus::tableView);
    List(0).SetCurrentLine(12);
    QTest::keyClick(&List(0), Qt::Key_Down, Qt::ShiftModifier);
    Choose(ReportMenus::copyLines);
    EXPECT_EQ(QApplication::clipboard()->text(),
              "Record 1\tAt\t14:05:33 07.Mar.2003\nComment:\t\n");
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
    ExpectRestsInEverySize(*form);
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
    const int line_px = QFontMetrics(head.font()).lineSpacing();
    EXPECT_GE(head.viewport()->height() - margins, 4 * line_px);
    EXPECT_LT(head.viewport()->height(), 4 * line_px + line_px / 4) << "a part of the fifth line";
}

TEST_F(ReportScreen, The_header_box_leaves_no_room_for_a_scroll_bar_that_is_not_there) {
    form->resize(1200, 900);
    MeasurementText text;
    text.electrodes = {"Ca"};
    text.sensors = {"1"};
    View(text.File(3));
    const auto& head = Find<QPlainTextEdit>(*form, "txtHead");
    ASSERT_FALSE(head.horizontalScrollBar()->isVisible());
    const double margins = 2 * head.document()->documentMargin();
    EXPECT_LT(head.viewport()->height() - margins, 5 * QFontMetrics(head.font()).lineSpacing());
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
