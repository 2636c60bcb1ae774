#include "screens/report/ReportScreen.h"

#include "screens/Report/RecordTableView.h"
#include "screens/controls/SeriesStyle.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>

namespace {

class RecordsTab : public ReportScreen {
protected:
    RecordTableView& Table() const { return Find<RecordTableView>(*form, "tblRecords"); }
    QTabBar& Views() const { return Find<QTabBar>(*form, "TabStrip"); }

    void ShowRecords() const {
        Views().setCurrentIndex(ReportViews::recordsTab);
        Settle();
    }
    QString Cell(int row, int column) const {
        return Table().model()->index(row, column).data().toString();
    }
    QString Title(int column) const {
        return Table().model()->headerData(column, Qt::Horizontal).toString();
    }

    /// Answers the menu of columns that the next step opens by choosing an entry.
    void ChooseColumn(const QString& title) const {
        QTimer::singleShot(0, &Table(), [this, title] {
            auto& menu = Find<QMenu>(*form, "mnuColumns");
            for (QAction* item : menu.actions())
                if (item->text() == title)
                    item->trigger();
            menu.close();
        });
    }
    void AskForColumns() const {
        Q_EMIT Table().horizontalHeader()->customContextMenuRequested({5, 5});
    }
};

} // namespace

TEST_F(RecordsTab, A_record_is_one_row_with_its_values_by_electrode_and_unit) {
    View(MeasurementText().File(120));
    ShowRecords();
    EXPECT_TRUE(Table().isVisible());
    EXPECT_EQ(Table().model()->rowCount(), 120);
    EXPECT_EQ(Title(0), "Record");
    EXPECT_EQ(Title(3), "Ch. 1 Ca (mV)");
    EXPECT_EQ(Cell(99, 0), "100");
    EXPECT_EQ(Cell(99, 3), "100.0");
}

TEST_F(RecordsTab, A_heading_of_values_bears_its_channels_mark_and_no_other_does) {
    View(MeasurementText().File(3));
    ShowRecords();
    const auto mark = [this](int column) {
        return Table()
            .model()
            ->headerData(column, Qt::Horizontal, Qt::DecorationRole)
            .value<QIcon>()
            .pixmap(16)
            .toImage();
    };
    EXPECT_TRUE(mark(0).isNull()) << "the record's number";
    EXPECT_EQ(Title(3), "Ch. 1 Ca (mV)");
    EXPECT_EQ(mark(3), SeriesStyle::Icon(0, QGuiApplication::palette()).pixmap(16).toImage());
    EXPECT_NE(mark(3), mark(4));
}

TEST_F(RecordsTab, Graph_and_list_stay_as_they_were) {
    View(MeasurementText().File(120));
    EXPECT_EQ(Views().currentIndex(), ReportViews::graphTab);
    EXPECT_EQ(Views().tabText(ReportViews::recordsTab), "&Records");
    EXPECT_FALSE(Table().isVisible());
    Views().setCurrentIndex(ReportViews::tableTab);
    EXPECT_TRUE(List(0).isVisible());
    EXPECT_FALSE(Table().isVisible());
}

TEST_F(RecordsTab, The_menu_entry_shows_it_and_is_checked) {
    View(MeasurementText().File(3));
    Choose(*form, "mnuViewItem_6");
    EXPECT_TRUE(Table().isVisible());
    EXPECT_TRUE(Find<QAction>(*form, "mnuViewItem_6").isChecked());
    EXPECT_FALSE(Find<QAction>(*form, "mnuViewItem_1").isChecked());
    Choose(*form, "mnuViewItem_1");
    EXPECT_FALSE(Table().isVisible());
}

TEST_F(RecordsTab, What_is_selected_is_copied_below_its_heading) {
    View(MeasurementText().File(20));
    ShowRecords();
    Table().setCurrentIndex(Table().model()->index(4, 0));
    QTest::keyClick(&Table(), Qt::Key_Down, Qt::ShiftModifier);
    Choose(*form, "mnuToolItem_3");
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 4) << "the last line is ended";
    EXPECT_TRUE(lines[0].startsWith("Record\tTime\tComment\tCh. 1 Ca (mV)\t"));
    EXPECT_TRUE(lines[1].startsWith("5\t14:05:33 07.Mar.2003\t\t5.0\t5.1\t"));
    EXPECT_TRUE(lines[2].startsWith("6\t"));
}

TEST_F(RecordsTab, A_column_that_is_not_wanted_stays_away_and_out_of_what_is_copied) {
    View(MeasurementText().File(20));
    ShowRecords();
    ChooseColumn("Time");
    AskForColumns();
    EXPECT_TRUE(Table().isColumnHidden(1));
    Table().setCurrentIndex(Table().model()->index(0, 0));
    Table().CopySelection();
    EXPECT_EQ(QApplication::clipboard()->text().left(15), "Record\tComment\t");
    View(MeasurementText().File(10), "other.4ch");
    ShowRecords();
    EXPECT_TRUE(Table().isColumnHidden(1)) << "in another file, too";
    EXPECT_EQ(platform.profile->GetInt("Records", "Time", 1), 0);
    ChooseColumn("Time");
    AskForColumns();
    EXPECT_FALSE(Table().isColumnHidden(1));
}

TEST_F(RecordsTab, The_number_of_the_record_cannot_be_hidden) {
    View(MeasurementText().File(2));
    ShowRecords();
    ChooseColumn("Record");
    AskForColumns();
    EXPECT_FALSE(Table().isColumnHidden(0));
}

TEST_F(RecordsTab, It_follows_a_growing_file_when_it_is_scrolled_to_its_end) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(200));
    ShowRecords();
    QScrollBar& bar = *Table().verticalScrollBar();
    Table().scrollToBottom();
    Append(MeasurementText().Record(201));
    run.RecordWritten();
    Settle();
    EXPECT_EQ(Table().model()->rowCount(), 201);
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(0);
    Append(MeasurementText().Record(202));
    run.RecordWritten();
    Settle();
    EXPECT_EQ(Table().model()->rowCount(), 202);
    EXPECT_EQ(Cell(201, 3), "202.0");
    EXPECT_EQ(bar.value(), 0) << "who reads further up is not disturbed";
}

TEST_F(RecordsTab, A_record_that_was_found_is_selected) {
    View(MeasurementText().File(5000));
    ShowRecords();
    Table().SelectRecord({1, 8});
    EXPECT_EQ(Table().currentIndex().row(), 4087);
    EXPECT_EQ(Cell(Table().currentIndex().row(), 0), "4088");
}

TEST_F(RecordsTab, A_record_found_before_is_selected_when_the_tab_is_opened) {
    View(MeasurementText().File(5000));
    Table().SelectRecord({0, MeasurementText::headerLines + 8 * 41});
    ShowRecords();
    EXPECT_EQ(Table().currentIndex().row(), 41);
}

TEST_F(RecordsTab, A_row_that_is_activated_is_shown_in_its_list) {
    View(MeasurementText().File(5000));
    ShowRecords();
    Table().setCurrentIndex(Table().model()->index(4089, 0));
    QTest::keyClick(&Table(), Qt::Key_Return);
    EXPECT_EQ(Views().currentIndex(), ReportViews::tableTab);
    EXPECT_TRUE(List(1).isVisible());
    EXPECT_EQ(List(1).CurrentLine(), 8 * 3);
    EXPECT_TRUE(List(1).LineText(8 * 3).startsWith("Record 4090"));
}

TEST_F(RecordsTab, Another_file_leaves_nothing_of_the_first) {
    View(MeasurementText().File(50));
    ShowRecords();
    View(MeasurementText().File(7), "other.4ch");
    EXPECT_EQ(Views().currentIndex(), ReportViews::graphTab);
    EXPECT_EQ(Table().model()->rowCount(), 0);
    ShowRecords();
    EXPECT_EQ(Table().model()->rowCount(), 7);
}
