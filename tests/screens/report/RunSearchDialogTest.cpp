#include "screens/frmSrch/RunSearchPane.h"
#include "screens/frmSrch/frmSrch.h"
#include "screens/report/ReportScreen.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {

class RunSearchDialog : public ReportScreen {
protected:
    void Open(int records = 200) {
        MeasurementText text;
        text.comment = [](int record) {
            return record % 50 == 20 ? "Stirrer on " + std::to_string(record) : std::string();
        };
        View(text.File(records));
        dialog = std::make_unique<frmSrch>(form->File());
        Show(*dialog);
    }
    void By(std::size_t index) { Element<QRadioButton>(*dialog, "optSearch", index).click(); }
    void Enter(const char* entry, const QString& text) {
        Find<QLineEdit>(*dialog, entry).setText(text);
    }
    void FindNext() {
        dialog->FindNext();
        while (Find<RunSearchPane>(*dialog, "RunSearchPane").IsSearching())
            QApplication::processEvents();
    }
    frmSrch& OpenFromViewer() {
        dialog.reset();
        Item(ReportMenus::findRecord).trigger();
        auto& search = Find<frmSrch>(*form, "frmSrch");
        search.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&search));
        return search;
    }
    QString Label(const char* name) { return Find<QLabel>(*dialog, name).text(); }
    QString Comment() { return Find<QLineEdit>(*dialog, "txtComment").text(); }

    std::unique_ptr<frmSrch> dialog;
};

} // namespace

TEST_F(RunSearchDialog, The_search_by_number_stands_first_as_it_was) {
    Open();
    EXPECT_TRUE(Element<QRadioButton>(*dialog, "optSearch", RunSearchPane::byNumber).isChecked());
    EXPECT_TRUE(Find<QLineEdit>(*dialog, "txtEntry").isVisible());
    EXPECT_FALSE(Find<QLineEdit>(*dialog, "txtText").isVisible());
}

TEST_F(RunSearchDialog, A_way_that_a_tool_chooses_is_shown_as_one_chosen_by_hand) {
    Open();
    Element<QRadioButton>(*dialog, "optSearch", RunSearchPane::byComment).setChecked(true);
    EXPECT_FALSE(Find<QLineEdit>(*dialog, "txtEntry").isVisible());
    EXPECT_TRUE(Find<QLineEdit>(*dialog, "txtText").isVisible());
}

TEST_F(RunSearchDialog, The_ways_of_searching_are_named) {
    Open();
    std::vector<QString> names;
    for (const std::size_t index : {0U, 1U, 2U, 3U})
        names.push_back(Element<QRadioButton>(*dialog, "optSearch", index).text());
    EXPECT_EQ(names, (std::vector<QString>{"&Number", "Co&mment text", "&Time", "&Value"}));
    EXPECT_EQ(Find<QPushButton>(*dialog, "cmdFindNext").text(), "Find ne&xt");
}

TEST_F(RunSearchDialog, A_comment_is_found_by_a_text_in_it_and_then_the_next_one) {
    Open();
    By(RunSearchPane::byComment);
    EXPECT_FALSE(Find<QLineEdit>(*dialog, "txtEntry").isVisible());
    Enter("txtText", "stirrer");
    FindNext();
    EXPECT_EQ(Comment(), "Stirrer on 20");
    EXPECT_EQ(Label("lblStatus"), "Ready");
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    20.0 mV");
    FindNext();
    EXPECT_EQ(Comment(), "Stirrer on 70");
}

TEST_F(RunSearchDialog, From_the_end_the_last_comment_comes_first) {
    Open();
    By(RunSearchPane::byComment);
    Enter("txtText", "stirrer");
    Find<QCheckBox>(*dialog, "chkFromEnd").setChecked(true);
    FindNext();
    EXPECT_EQ(Comment(), "Stirrer on 170");
    FindNext();
    EXPECT_EQ(Comment(), "Stirrer on 120");
}

TEST_F(RunSearchDialog, A_text_that_no_comment_holds_is_not_found) {
    Open();
    By(RunSearchPane::byComment);
    Enter("txtText", "nowhere");
    FindNext();
    EXPECT_EQ(Label("lblStatus"), "Not Found");
    EXPECT_EQ(Label("lblRtn"), "");
}

TEST_F(RunSearchDialog, The_nearest_time_is_found_and_what_is_no_time_is_refused) {
    Open();
    By(RunSearchPane::byTime);
    Enter("txtTime", "yesterday");
    FindNext();
    EXPECT_EQ(Label("lblStatus"), "Enter the time as 14:05:33 07.Mar.2003");
    Enter("txtTime", "15:00:00 07.Mar.2003");
    FindNext();
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    1.0 mV");
}

TEST_F(RunSearchDialog, A_value_above_or_below_a_limit_is_found_in_the_chosen_channel) {
    Open();
    By(RunSearchPane::byValue);
    Enter("txtLimit", "41.5");
    FindNext();
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    42.0 mV");
    Find<QComboBox>(*dialog, "cboAbove").setCurrentIndex(1);
    FindNext();
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    1.0 mV");
    Enter("txtLimit", "0,5");
    FindNext();
    EXPECT_EQ(Label("lblStatus"), "Enter the limit as a number");
}

TEST_F(RunSearchDialog, A_search_can_be_stopped) {
    Open(4000);
    By(RunSearchPane::byComment);
    Enter("txtText", "nowhere");
    dialog->FindNext();
    EXPECT_EQ(Label("lblStatus"), "Searching the record...");
    Find<QPushButton>(*dialog, "cmdStop").click();
    QApplication::processEvents();
    EXPECT_EQ(Label("lblStatus"), "Ready");
    EXPECT_FALSE(Find<QPushButton>(*dialog, "cmdStop").isEnabled());
}

TEST_F(RunSearchDialog, What_was_found_is_brought_into_list_and_graph) {
    Open();
    frmSrch& search = OpenFromViewer();
    Element<QRadioButton>(search, "optSearch", RunSearchPane::byComment).click();
    Find<QLineEdit>(search, "txtText").setText("on 170");
    QTest::keyClick(&search, Qt::Key_F3);
    while (Find<RunSearchPane>(search, "RunSearchPane").IsSearching())
        QApplication::processEvents();
    EXPECT_EQ(List(0).CurrentLine(), MeasurementText::headerLines + 169 * 8);
}

TEST_F(RunSearchDialog, A_search_ends_before_another_file_is_opened) {
    Open(4000);
    frmSrch& search = OpenFromViewer();
    Element<QRadioButton>(search, "optSearch", RunSearchPane::byComment).click();
    Find<QLineEdit>(search, "txtText").setText("nowhere");
    search.FindNext();
    View(MeasurementText().File(5), "other.4ch");
    EXPECT_FALSE(Find<RunSearchPane>(search, "RunSearchPane").IsSearching());
}

TEST_F(RunSearchDialog, Every_way_of_searching_has_names_and_mnemonics_of_its_own_and_fits) {
    Open();
    for (const std::size_t index : {0U, 1U, 2U, 3U}) {
        By(index);
        Settle();
        EXPECT_EQ(ControlsWithoutName(*dialog), std::vector<std::string>()) << index;
        EXPECT_EQ(SharedMnemonics(*dialog), std::vector<std::string>()) << index;
        ExpectFitsAtDoubleScale(*dialog);
        ExpectRestsInEverySize(*dialog);
    }
}
