#include "files/MeasuringRun.h"
#include "history/Log.h"
#include "history/Notes.h"
#include "screens/calib/CalibTest.h"
#include "screens/frmHistory/HistoryGraph.h"
#include "screens/frmHistory/frmHistory.h"
#include "screens/frmMain/frmMain.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QMenu>
#include <QTableWidget>

namespace {

/// A history with calibrations of two Ca electrodes on two days, and a failure of the link.
class HistoryForm : public CalibTest {
protected:
    HistoryForm() {
        log.emplace(History::UsualFile(), [](const std::string& text) { ADD_FAILURE() << text; });
        mWinInit::ProjectInfo.Experimentator = "Kim";
        Calibrate("A1", {-55.3F, -25.7F}, {29.6F});
        platform.clock.now.day = 9;
        Calibrate("A1", {-60.0F, -35.0F}, {25.0F});
        Calibrate("B2", {-55.3F, -25.7F}, {29.6F});
        History::Note(History::Kind::linkFailed, "COM1: the instrument does not answer");
    }

    void Calibrate(const char* serialNo, std::array<float, 2> points_mV,
                   std::array<float, 1> slope) {
        mWinInit::ChannelSetup[firstCa].SerialNo = serialNo;
        CalibrationRecord& record = Stored(firstCa);
        record.PointCount = 2;
        record.Standard = {10, 100};
        record.CaliData = {points_mV[0], points_mV[1]};
        record.Slope = {slope[0]};
        History::NoteCalibration(firstCa, "24.9");
    }

    frmHistory& Open() {
        form = std::make_unique<frmHistory>(*log);
        Show(*form);
        return *form;
    }

    static QTableWidget& Table(const QWidget& in, const char* name) {
        return Find<QTableWidget>(in, name);
    }
    static std::string Cell(const QTableWidget& table, int row, int column) {
        return table.item(row, column)->text().toStdString();
    }
    void ShowEvents() { Find<QTabWidget>(*form, "tabHistory").setCurrentIndex(1); }

    std::optional<History::Log> log;
    std::unique_ptr<frmHistory> form;
};

} // namespace

TEST_F(HistoryForm, The_calibrations_of_the_electrode_that_was_calibrated_last_are_shown) {
    Open();
    auto& electrodes = Find<QComboBox>(*form, "cboElectrode");
    ASSERT_EQ(electrodes.count(), 2);
    EXPECT_EQ(electrodes.currentText(), "Ca, B2");
    electrodes.setCurrentIndex(1);
    EXPECT_EQ(electrodes.currentText(), "Ca, A1");
    auto& table = Table(*form, "tblCalib");
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(Cell(table, 0, 0), "09.Mar.2003 14:05:33"); // the latest on top
    EXPECT_EQ(Cell(table, 0, 1), "2");
    EXPECT_EQ(Cell(table, 0, 3), "10 -60; 100 -35");
    EXPECT_EQ(Cell(table, 0, 5), "84.5 !"); // 25.0 / 29.58
    EXPECT_TRUE(table.item(0, 5)->font().bold());
    EXPECT_EQ(Cell(table, 1, 5), "100.1");
    EXPECT_FALSE(table.item(1, 5)->font().bold());
    EXPECT_EQ(Cell(table, 1, 7), "24.9");
    EXPECT_EQ(Cell(table, 1, 10), "Kim");
}

TEST_F(HistoryForm, The_graph_shows_slope_and_offset_over_time_between_the_bounds) {
    Open().ShowElectrode({"Ca", "A1"});
    auto& graph = Find<HistoryGraph>(*form, "graHistory");
    ASSERT_EQ(graph.graphCount(), 2);
    ASSERT_EQ(graph.graph(0)->dataCount(), 2);
    EXPECT_FLOAT_EQ(static_cast<float>(graph.graph(0)->dataMainValue(1)), 84.5F);
    EXPECT_FLOAT_EQ(static_cast<float>(graph.graph(1)->dataMainValue(1)), -85.0F);
    EXPECT_DOUBLE_EQ(graph.graph(0)->dataMainKey(1) - graph.graph(0)->dataMainKey(0), 2 * 86400);
    EXPECT_TRUE(graph.yAxis->range().contains(84.5));
    EXPECT_TRUE(graph.yAxis->range().contains(105));
    EXPECT_TRUE(graph.yAxis2->range().contains(-85));
    EXPECT_EQ(graph.itemCount(), 2);
}

TEST_F(HistoryForm, An_electrode_that_was_never_calibrated_has_an_empty_table) {
    Open().ShowElectrode({"Cl", "C3"});
    EXPECT_EQ(Find<QComboBox>(*form, "cboElectrode").currentText(), "Cl, C3");
    EXPECT_EQ(Table(*form, "tblCalib").rowCount(), 0);
}

TEST_F(HistoryForm, No_date_stands_twice_on_the_graph_of_few_days) {
    for (const char* serialNo : {"A1", "B2"}) { // two days, one day
        Open().ShowElectrode({"Ca", serialNo});
        auto& graph = Find<HistoryGraph>(*form, "graHistory");
        graph.replot();
        auto dates = QStringList(graph.xAxis->tickVectorLabels());
        EXPECT_GE(dates.size(), 4) << serialNo;
        EXPECT_EQ(dates.removeDuplicates(), 0) << serialNo;
    }
}

TEST_F(HistoryForm, A_graph_without_calibrations_says_why_instead_of_showing_axes) {
    Open().ShowElectrode({"Cl", "C3"});
    auto& graph = Find<HistoryGraph>(*form, "graHistory");
    EXPECT_EQ(graph.EmptyText(), "No calibration of this electrode has been taken down.");
    EXPECT_EQ(graph.accessibleDescription(), graph.EmptyText());
    for (const QCPAxis* axis : {graph.xAxis, graph.yAxis, graph.yAxis2})
        EXPECT_FALSE(axis->visible()) << axis->label().toStdString();
    EXPECT_FALSE(graph.legend->visible());

    form->ShowElectrode({"Ca", "A1"});
    EXPECT_EQ(graph.EmptyText(), "");
    for (const QCPAxis* axis : {graph.xAxis, graph.yAxis, graph.yAxis2})
        EXPECT_TRUE(axis->visible()) << axis->label().toStdString();
    EXPECT_TRUE(graph.legend->visible());
    EXPECT_EQ(graph.itemCount(), 2) << "the bounds alone";
}

TEST_F(HistoryForm, A_history_without_any_calibration_says_so_in_the_graph) {
    log.reset();
    std::filesystem::remove(History::UsualFile());
    log.emplace(History::UsualFile(), [](const std::string& text) { ADD_FAILURE() << text; });
    Open();
    EXPECT_EQ(Find<HistoryGraph>(*form, "graHistory").EmptyText(),
              "No calibration has been taken down yet.");
}

TEST_F(HistoryForm, Calibrations_that_give_no_line_are_told_in_the_graph) {
    History::Entry bare;
    bare.kind = History::Kind::calibration;
    bare.electrode = "Ca";
    bare.serialNo = "E5";
    History::Note(bare);
    Open().ShowElectrode({"Ca", "E5"});
    EXPECT_EQ(Table(*form, "tblCalib").rowCount(), 1);
    EXPECT_EQ(Find<HistoryGraph>(*form, "graHistory").EmptyText(),
              "The calibrations of this electrode give no slope and no offset.");
}

TEST_F(HistoryForm, Events_are_filtered_by_days_and_kind_and_searched) {
    Open();
    ShowEvents();
    auto& table = Table(*form, "tblEvents");
    EXPECT_EQ(table.rowCount(), 5); // with the history's own beginning
    EXPECT_EQ(Cell(table, 0, 1), "Link failed");
    EXPECT_EQ(Cell(table, 0, 3), "COM1: the instrument does not answer");
    EXPECT_EQ(Cell(table, 0, 5), "Kim");
    Find<QDateEdit>(*form, "txtTo").setDate(QDate(2003, 3, 8));
    EXPECT_EQ(table.rowCount(), 2);
    Find<QDateEdit>(*form, "txtTo").setDate(QDate(2003, 3, 9));
    Pick(*form, "cboKind", "Calibration");
    EXPECT_EQ(table.rowCount(), 3);
    Type(*form, "txtSearch", "b2");
    ASSERT_EQ(table.rowCount(), 1);
    EXPECT_EQ(Cell(table, 0, 3), "Ca in channel 2, 2 points in ppm, 100.1 % of theory");
    Type(*form, "txtSearch", "nowhere");
    EXPECT_EQ(table.rowCount(), 0);
}

TEST_F(HistoryForm, The_chain_of_all_entries_is_walked_and_the_outcome_told) {
    Open();
    Settle();
    EXPECT_EQ(TextOf(*form, "lblChain"), "5 entries, all as they were written");
}

TEST_F(HistoryForm, Each_table_is_saved_as_csv) {
    Open().ShowElectrode({"Ca", "A1"});
    const auto file = platform.folder.Path() / "saved.csv";
    const auto save = [&](const char* name) {
        platform.dialogs.ExpectFileDialog([&, name](const platform::FileDialogRequest& request) {
            EXPECT_EQ(request.fileName, name);
            return std::optional(file);
        });
        Click(*form, "cmdCsv");
        return ReadBytes(file);
    };
    EXPECT_EQ(save("calibrations.csv"),
              "Time,Electrode,Serial number,Channel,Unit,Points (standard mV),Slopes,% of "
              "theory,Offset mV,Temperature,Reference type,Reference serial number,Analyst\r\n"
              "2003-03-07T14:05:33,Ca,A1,2,ppm,10 -55.3; 100 -25.7,29.6,100.1,-84.9,24.9,"
              ",,Kim\r\n"
              "2003-03-09T14:05:33,Ca,A1,2,ppm,10 -60; 100 -35,25.0,84.5,-85,24.9,,,Kim\r\n");
    ShowEvents();
    Type(*form, "txtSearch", "answer");
    const std::string events = save("events.csv");
    EXPECT_NE(events.find("5,2003-03-09T14:05:33,Link failed,,,,COM1: the instrument does not "
                          "answer,,Kim,"),
              std::string::npos)
        << events;
}

TEST_F(HistoryForm, Every_control_has_a_name_and_the_form_fits_onto_a_small_screen) {
    Open();
    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>{});
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
}

TEST_F(HistoryForm, Help_shows_its_text) {
    Open();
    Click(*form, "cmdHelp");
    ASSERT_EQ(platform.desktop.helpShown.size(), 1U);
    EXPECT_EQ(platform.desktop.helpShown[0].filename(), "HistHlp.txt");
}

namespace {

class HistoryFromMain : public HistoryForm {
protected:
    static frmHistory* Shown() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "frmHistory" && window->isVisible())
                return qobject_cast<frmHistory*>(window);
        return nullptr;
    }

    FileOpr::MeasuringRun run;
};

} // namespace

TEST_F(HistoryFromMain, The_file_menu_opens_it) {
    frmMain main(run);
    Show(main);
    Choose(main, "mnuHistory");
    ASSERT_NE(Shown(), nullptr);
    const auto entries = Find<QMenu>(main, "mnuFile").actions();
    EXPECT_EQ(entries.size(), 6);
    EXPECT_EQ(entries.at(3)->objectName(), "mnuHistory");
}

TEST_F(HistoryFromMain, A_right_click_on_a_calibration_date_shows_that_electrode) {
    frmMain main(run);
    Show(main);
    mWinInit::ChannelSetup[firstCa].SerialNo = "A1";
    Find<QLineEdit>(main, QString("txtEntry_%1").arg(4 + firstCa)).setText("A1");
    auto& date = Element<QLabel>(main, "lblCalibDate", firstCa);
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(2, 2), date.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&date, &click);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_EQ(Find<QComboBox>(*Shown(), "cboElectrode").currentText(), "Ca, A1");
    EXPECT_EQ(Table(*Shown(), "tblCalib").rowCount(), 2);
}

TEST_F(HistoryFromMain, A_calibration_older_than_its_limit_is_marked_on_the_setup_page) {
    Stored(firstCa).CalibrationDate = "14:05 07.Mar.2003"; // two days ago
    frmMain main(run);
    Show(main);
    auto& date = Element<QLabel>(main, "lblCalibDate", firstCa);
    EXPECT_EQ(date.text(), "07.Mar.2003") << "never, unless chosen";
    Choose(main, "mnuHistory");
    ASSERT_NE(Shown(), nullptr);
    auto& ionHours = Element<QSpinBox>(*Shown(), "txtAge", 1);
    EXPECT_EQ(ionHours.text(), "never");
    ionHours.setValue(24);
    EXPECT_EQ(date.text(), "07.Mar.2003 !");
    EXPECT_TRUE(date.font().bold());
    EXPECT_TRUE(date.toolTip().startsWith("More than 24 hours ago."))
        << date.toolTip().toStdString();
    ionHours.setValue(49);
    EXPECT_EQ(date.text(), "07.Mar.2003");
    platform.clock.now.hour += 2;
    Tick(main, "tmrAge");
    EXPECT_EQ(date.text(), "07.Mar.2003 !");
}

TEST_F(HistoryFromMain, Where_none_is_kept_that_is_said) {
    log.reset();
    frmMain main(run);
    Show(main);
    platform.dialogs.ExpectMessage("No history is kept.", information);
    Choose(main, "mnuHistory");
    EXPECT_EQ(Shown(), nullptr);
}
