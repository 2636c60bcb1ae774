#include "screens/report/ReportScreen.h"

#include "screens/frmSrch/frmSrch.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace {

constexpr int recordsOfFirstPage = 4086;

} // namespace

TEST_F(ReportScreen, A_found_record_is_brought_into_the_list) {
    View(MeasurementText().File(recordsOfFirstPage + 3));
    Choose(ReportMenus::tableView);
    Choose(ReportMenus::findRecord);
    auto& search = Find<frmSrch>(*form, "frmSrch");
    EXPECT_TRUE(search.isVisible());
    Type(search, "txtEntry", "4088");
    QTest::keyClick(&Find<QWidget>(search, "txtEntry"), Qt::Key_Return);
    EXPECT_EQ(Shown().shownPageIndex, 1);
    EXPECT_EQ(List(1).CurrentLine(), 8);
}

TEST_F(ReportScreen, A_search_forgets_what_it_found_when_another_file_is_opened) {
    View(MeasurementText().File(20));
    Choose(ReportMenus::findRecord);
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

TEST_F(ReportScreen, A_failed_open_leaves_the_search_as_it_was) {
    View(MeasurementText().File(20));
    Choose(ReportMenus::findRecord);
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

TEST_F(ReportScreen, A_found_record_is_shown_whole_and_the_graph_goes_along) {
    View(MeasurementText().File(500));
    Choose(ReportMenus::tableView);
    Choose(ReportMenus::findRecord);
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
