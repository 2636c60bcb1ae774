#include "chem/Measure.h"
#include "screens/calib/CalibTest.h"
#include "screens/calibration/CalibrationPlot.h"
#include "screens/frmCalib/frmCalib.h"
#include "settings/mWinInit.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

#include <algorithm>

namespace {

constexpr const char* incorrectData = "Incorrect calibration data encountered.";
constexpr char separator = '\x0F';

class SingleSummary : public CalibTest {
protected:
    void Open(std::size_t channel) {
        form = std::make_unique<frmCalib>(channel);
        Show(*form);
    }

    void RecordPoint(int point, const QString& standard, double potential_mV) {
        Type(*form, "txtEntry_" + QString::number(point), standard);
        Click(*form, "cmdSys", frmCalib::mainButton);
        ReadingArrives(*form, potential_mV);
        Click(*form, "cmdSys", frmCalib::mainButton);
    }

    /// Two Ca standards on channel 2, up to the summary.
    void CalibrateCa() {
        Open(firstCa);
        RecordPoint(0, "1", 100);
        RecordPoint(1, "10", 129);
        Click(*form, "cmdSys", frmCalib::mainButton);
    }

    void ExpectQuestion(int answer) {
        platform.dialogs.ExpectMessage("The calibration process has not been achieved yet.\n"
                                       "Would you like to quit the process?",
                                       Style(platform::style::yesNo, platform::style::exclamation,
                                             platform::style::defaultButton2),
                                       answer);
    }

    std::string Text(const QString& name) const { return TextOf(*form, name); }

    std::string SlopeCell(int row, int column) const {
        return Find<QTableWidget>(*form, "lstSlopes").item(row, column)->text().toStdString();
    }

    std::unique_ptr<frmCalib> form;
};

} // namespace

TEST_F(SingleSummary, Continue_shows_the_summary_with_one_slope_for_two_points) {
    CalibrateCa();
    EXPECT_EQ(Text("lblTitle"), "Calibration Summary");
    EXPECT_TRUE(Find<QWidget>(*form, "picPage").isVisible());
    EXPECT_EQ(Text("lblSlopes"), "Slopes");
    EXPECT_EQ(Find<QTableWidget>(*form, "lstSlopes").rowCount(), 1);
    EXPECT_EQ(SlopeCell(0, 0), "1 - 2");
    EXPECT_EQ(SlopeCell(0, 1), "29.0");
    EXPECT_EQ(SlopeCell(0, 2), "98.0 %"); // 29.0 / 29.58
    EXPECT_EQ(Text("lblRemark"), "");
    EXPECT_FALSE(Find<QLabel>(*form, "lblIncorrect").isVisible());
}

TEST_F(SingleSummary, The_plot_shows_the_points_over_the_logarithm_of_concentration) {
    CalibrateCa();
    auto& plot = Find<CalibrationPlot>(*form, "pltCalibration");
    const auto* line = qobject_cast<QCPCurve*>(plot.plottable());
    ASSERT_NE(line, nullptr);
    ASSERT_EQ(line->data()->size(), 2);
    EXPECT_DOUBLE_EQ(line->data()->at(0)->key, 0);
    EXPECT_DOUBLE_EQ(line->data()->at(0)->value, 100);
    EXPECT_DOUBLE_EQ(line->data()->at(1)->key, 1);
    EXPECT_DOUBLE_EQ(line->data()->at(1)->value, 129);
    EXPECT_TRUE(plot.xAxis->range().contains(0) && plot.xAxis->range().contains(1));
    EXPECT_TRUE(plot.yAxis->range().contains(100) && plot.yAxis->range().contains(129));
    EXPECT_EQ(plot.yAxis->label(), "mV");
    EXPECT_EQ(plot.xAxis->label(), "Concentration (ppm)");
    QVector<double> ticks;
    QVector<QString> labels;
    plot.xAxis->ticker()->generate(plot.xAxis->range(), QLocale::c(), 'g', 6, ticks, nullptr,
                                   &labels);
    EXPECT_EQ(labels, (QVector<QString>{"1", "10"})) << "the numbers, not their logarithms";
}

TEST_F(SingleSummary, The_slopes_are_written_by_the_summary_and_the_rest_by_closing) {
    CalibrateCa();
    EXPECT_EQ(Stored(firstCa).Slope[0], 29.0F);
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
    EXPECT_EQ(LibraryLine(firstCa), "");
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SingleSummary, Closing_stores_points_unit_and_the_date_without_seconds) {
    CalibrateCa();
    QSignalSpy stored(form.get(), &frmCalib::CalibrationStored);
    form->close();
    EXPECT_FALSE(form->isVisible());
    const CalibrationRecord& record = Stored(firstCa);
    EXPECT_EQ(record.CalibrationDate, "14:05 07.Mar.2003");
    EXPECT_EQ(record.StdUnit, 0.0F);
    EXPECT_EQ(record.Standard[1], 10.0F);
    EXPECT_EQ(record.CaliData[1], 129.0F);
    EXPECT_EQ(record.Slope[0], 29.0F);
    ASSERT_EQ(stored.count(), 1);
    EXPECT_EQ(stored[0][0].toInt(), firstCa);
    const std::string joined = std::string("14:05 07.Mar.2003") + separator + "2" + separator +
                               "0" + separator + "1;100" + separator + "10;129";
    EXPECT_EQ(LibraryLine(firstCa), joined);
}

TEST_F(SingleSummary, Escape_and_Finish_store_too) {
    CalibrateCa();
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
    Stored(firstCa) = {};
    CalibrateCa();
    Click(*form, "cmdSys", frmCalib::finishButton);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SingleSummary, A_line_that_cannot_be_read_back_whole_is_told) {
    Open(firstCa);
    Pick(*form, "cboCalibPtrs", "6");
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    const char* standards[] = {"1.234567E-06", "1.234567E-05", "1.234567E-04",
                               "1.234567E-03", "1.234567E-02", "1.234567E-01"};
    for (int point = 0; point < 6; ++point)
        RecordPoint(point, standards[point], -500.5 + 29 * point);
    Click(*form, "cmdSys", frmCalib::mainButton);
    platform.dialogs.ExpectMessage("Channel 2: calibration point 6 does not fit into the settings "
                                   "file and will not come back.",
                                   exclamation);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Stored(firstCa).PointCount, 6);
}

TEST_F(SingleSummary, Back_returns_to_the_first_entry_field) {
    CalibrateCa();
    EXPECT_EQ(Caption(*form, frmCalib::secondButton), "&Back");
    Click(*form, "cmdSys", frmCalib::secondButton);
    EXPECT_EQ(Text("lblTitle"), "Electrode Calibration");
    EXPECT_EQ(FocusName(*form), "txtEntry_0");
    EXPECT_EQ(Caption(*form, frmCalib::mainButton), "Contin&ue");
    EXPECT_EQ(Caption(*form, frmCalib::secondButton), "&Clear");
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2) << "its summary has been shown";
}

TEST_F(SingleSummary, A_change_after_Back_needs_a_new_summary) {
    CalibrateCa();
    Click(*form, "cmdSys", frmCalib::secondButton);
    Type(*form, "txtEntry_1", "100");
    ExpectQuestion(platform::button::no);
    form->close();
    EXPECT_TRUE(form->isVisible());
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(SlopeCell(0, 1), "14.5");
    EXPECT_EQ(SlopeCell(0, 2), "49.0 % !");
    EXPECT_NE(Text("lblRemark").find("90 to 105 %"), std::string::npos);
    form->close();
    EXPECT_EQ(Stored(firstCa).Standard[1], 100.0F);
    EXPECT_EQ(Stored(firstCa).Slope[0], 14.5F);
}

TEST_F(SingleSummary, Giving_up_after_Back_and_Clear_puts_the_old_record_back) {
    CalibrationRecord before;
    before.PointCount = 2;
    before.CalibrationDate = "10:12 07.Mar.2003";
    before.Standard = {1, 100};
    before.CaliData = {0, 58};
    before.Slope = {29};
    Stored(firstCa) = before;
    CalibrateCa();
    Click(*form, "cmdSys", frmCalib::secondButton);
    Click(*form, "cmdSys", frmCalib::secondButton);
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa), before);
}

TEST_F(SingleSummary, An_entry_spoilt_after_recording_is_refused_at_Continue) {
    Open(firstCa);
    RecordPoint(0, "1", 100);
    RecordPoint(1, "10", 129);
    Type(*form, "txtEntry_0", "one");
    platform.dialogs.ExpectMessage("Input not correct.", exclamation);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblTitle"), "Electrode Calibration");
    EXPECT_EQ(FocusName(*form), "txtEntry_0");
    ExpectQuestion(platform::button::yes);
    form->close();
}

TEST_F(SingleSummary, Equal_standards_are_incorrect_data_and_are_not_stored) {
    for (const bool isPH : {false, true}) {
        const std::size_t channel = isPH ? pHChannel : firstCa;
        Open(channel);
        RecordPoint(0, "7", 100);
        RecordPoint(1, "7", 129);
        platform.dialogs.ExpectMessage(incorrectData, exclamation);
        Click(*form, "cmdSys", frmCalib::mainButton);
        const auto& red = Find<QLabel>(*form, "lblIncorrect");
        EXPECT_TRUE(red.isVisible());
        EXPECT_EQ(red.text(), incorrectData);
        const QColor colour = red.palette().color(QPalette::WindowText);
        EXPECT_GT(colour.red(), 2 * colour.green());
        EXPECT_FALSE(Find<QTableWidget>(*form, "lstSlopes").isVisible());
        EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", frmCalib::mainButton).isEnabled())
            << "nothing to print";
        ExpectQuestion(platform::button::yes);
        form->close();
        EXPECT_EQ(Stored(channel).PointCount, 0);
        EXPECT_EQ(LibraryLine(channel), "");
    }
}

TEST_F(SingleSummary, A_standard_of_0_is_incorrect_data_and_can_be_mended) {
    Open(firstCa);
    RecordPoint(0, "0", 71);
    RecordPoint(1, "10", 129);
    platform.dialogs.ExpectMessage(incorrectData, exclamation);
    Click(*form, "cmdSys", frmCalib::mainButton);
    Click(*form, "cmdSys", frmCalib::secondButton);
    Type(*form, "txtEntry_0", "0.1");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(SlopeCell(0, 1), "29.0");
    EXPECT_FALSE(Find<QLabel>(*form, "lblIncorrect").isVisible());
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SingleSummary, Print_prints_what_is_shown) {
    CalibrateCa();
    EXPECT_EQ(Caption(*form, frmCalib::mainButton), "&Print");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ASSERT_EQ(platform.printing.documents.size(), 1U);
    const auto& texts = platform.printing.documents[0].texts;
    const auto printed = [&](const std::string& text) {
        return std::ranges::any_of(texts, [&](const auto& item) { return item.text == text; });
    };
    EXPECT_TRUE(printed("Calibration Summary"));
    EXPECT_TRUE(printed("Ca"));
    EXPECT_TRUE(printed("Channel 2"));
    EXPECT_TRUE(printed("14:05 07.Mar.2003"));
    EXPECT_TRUE(printed("129"));
    EXPECT_TRUE(printed("29"));
    form->close();
}

TEST_F(SingleSummary, A_printer_that_fails_is_told_and_the_calibration_stays) {
    CalibrateCa();
    platform.printing.failure = "Printing Calibration Summary: the queue is stopped";
    platform.dialogs.ExpectMessage(
        "Unexpected Error - Printing Calibration Summary: the queue is stopped\n"
        "Error location - PrintCalibSummary",
        critical);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_TRUE(form->isVisible());
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SingleSummary, The_unit_chosen_is_stored_with_the_points) {
    Open(firstCa);
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    RecordPoint(0, "0.001", 100);
    RecordPoint(1, "0.01", 129);
    Click(*form, "cmdSys", frmCalib::mainButton);
    form->close();
    EXPECT_EQ(Stored(firstCa).StdUnit, 1.0F);
    EXPECT_EQ(Stored(firstCa).Standard[0], 0.001F);
    EXPECT_EQ(Stored(firstCa).Slope[0], 29.0F);
}

TEST_F(SingleSummary, Three_buffers_give_two_slopes_per_pH) {
    Open(pHChannel);
    Pick(*form, "cboCalibPtrs", "3");
    RecordPoint(0, "4", 177.5);
    RecordPoint(1, "7", 0);
    RecordPoint(2, "10", -172.2);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(SlopeCell(0, 1), "-59.2");
    EXPECT_EQ(SlopeCell(1, 1), "-57.4");
    EXPECT_EQ(Find<QTableWidget>(*form, "lstSlopes").horizontalHeaderItem(1)->text(), "mV/pH");
    form->close();
    EXPECT_EQ(Stored(pHChannel).PointCount, 3);
}

TEST_F(SingleSummary, Fewer_points_leave_the_stored_entries_behind_them) {
    CalibrationRecord& record = Stored(firstCa);
    record.PointCount = 3;
    record.Standard = {2, 20, 200};
    record.CaliData = {1, 30, 59};
    record.Slope = {29, 29};
    Open(firstCa);
    Pick(*form, "cboCalibPtrs", "2");
    RecordPoint(0, "1", 100);
    RecordPoint(1, "10", 130);
    Click(*form, "cmdSys", frmCalib::mainButton);
    form->close();
    EXPECT_EQ(record.PointCount, 2);
    EXPECT_EQ(record.Standard, (std::array<float, 6>{1, 10, 200}));
    EXPECT_EQ(record.CaliData, (std::array<float, 6>{100, 130, 59}));
    EXPECT_EQ(record.Slope, (std::array<float, 5>{30, 29}));
}

TEST_F(SingleSummary, A_pH_calibration_leaves_the_stored_unit) {
    Stored(pHChannel).StdUnit = 1;
    Open(pHChannel);
    RecordPoint(0, "4", 177.5);
    RecordPoint(1, "7", 0);
    Click(*form, "cmdSys", frmCalib::mainButton);
    form->close();
    EXPECT_EQ(Stored(pHChannel).PointCount, 2);
    EXPECT_EQ(Stored(pHChannel).StdUnit, 1.0F);
}

TEST_F(SingleSummary, A_unit_that_a_tool_chooses_for_a_pH_electrode_is_none) {
    Open(pHChannel);
    RecordPoint(0, "4", 177.5);
    Find<QComboBox>(*form, "cboUnits").setCurrentIndex(1);
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentIndex(), 0);
    EXPECT_EQ(Text("txtEntry_0"), "4");
    EXPECT_EQ(Stored(pHChannel).StdUnit, 0.0F);
    ExpectQuestion(platform::button::yes);
    form->close();
}
