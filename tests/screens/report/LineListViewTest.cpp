#include "screens/controls/LineListView.h"

#include "screens/support/ScreenTest.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QTest>

#include <set>

namespace {

class LineListTest : public ScreenTest {
protected:
    LineListTest() {
        list.SetTabStops("Rec. 31000", "+1.33E+13");
        list.resize(500, 200);
        list.SetSource([this] { return lines; },
                       [this](int line) {
                           asked.insert(line);
                           return "line " + QString::number(line) + "\tcell";
                       });
        Show(list);
    }

    int lines = 1'000'000;
    std::set<int> asked;
    LineListView list;
};

} // namespace

TEST_F(LineListTest, Only_visible_lines_are_asked_for) {
    list.grab();
    EXPECT_FALSE(asked.empty());
    EXPECT_LT(asked.size(), 60U);
    EXPECT_LT(*asked.rbegin(), 60);
}

TEST_F(LineListTest, The_keyboard_reaches_every_line) {
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(list.CurrentLine(), 999'999);
    QTest::keyClick(&list, Qt::Key_PageUp);
    EXPECT_LT(list.CurrentLine(), 999'999);
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_EQ(list.CurrentLine(), 0);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.CurrentLine(), 1);
}

TEST_F(LineListTest, Selected_lines_are_copied_in_order) {
    list.SetCurrentLine(3);
    QTest::keyClick(&list, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "line 2\tcell\nline 3\tcell\n");
}

TEST_F(LineListTest, The_mouse_selects_a_range_with_shift) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    EXPECT_EQ(list.CurrentLine(), 0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier, QPoint(20, 100));
    EXPECT_EQ(list.SelectedFirst(), 0);
    EXPECT_GT(list.SelectedLast(), 2);
}

TEST_F(LineListTest, A_growing_source_is_shown_after_it_is_told) {
    lines = 3;
    list.LinesChanged();
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
    lines = 100;
    list.LinesChanged();
    EXPECT_GT(list.verticalScrollBar()->maximum(), 50);
}

TEST_F(LineListTest, An_empty_list_takes_every_key) {
    lines = 0;
    list.LinesChanged();
    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_PageDown})
        QTest::keyClick(&list, key);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 100));
    EXPECT_EQ(list.SelectedText(), "");
    EXPECT_EQ(list.CurrentLine(), -1);
}

TEST_F(LineListTest, A_screen_reader_is_told_the_current_line) {
    list.SetCurrentLine(7);
    auto* interface = QAccessible::queryAccessibleInterface(&list);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::List);
    EXPECT_EQ(interface->text(QAccessible::Value), "line 7\tcell");
}

TEST_F(LineListTest, A_list_at_its_end_stays_there_when_it_grows_and_one_elsewhere_does_not) {
    QTest::keyClick(&list, Qt::Key_End);
    lines += 8;
    list.LinesChanged();
    EXPECT_EQ(list.verticalScrollBar()->value(), list.verticalScrollBar()->maximum());
    list.verticalScrollBar()->setValue(100);
    lines += 8;
    list.LinesChanged();
    EXPECT_EQ(list.verticalScrollBar()->value(), 100);
}

TEST_F(LineListTest, A_line_is_shown_with_the_lines_that_belong_to_it) {
    list.SetCurrentLine(500, 7);
    const int visible = list.verticalScrollBar()->pageStep();
    EXPECT_LE(list.verticalScrollBar()->value(), 500);
    EXPECT_GE(list.verticalScrollBar()->value() + visible, 508);
    list.SetCurrentLine(9000, 100'000);
    EXPECT_EQ(list.verticalScrollBar()->value(), 9000) << "the line itself stays in view";
}
