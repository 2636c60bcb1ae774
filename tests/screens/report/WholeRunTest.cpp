#include "screens/report/WholeRunScreen.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QWheelEvent>
#include <qcustomplot.h>

namespace {
using Mreport::RecordSpan;
}

TEST_F(WholeRunScreen, The_overview_holds_the_whole_file_and_frames_the_span_of_the_graph) {
    ViewRun({}, 400);
    EXPECT_EQ(Panel().Overview().Share(), 1);
    EXPECT_EQ(Panel().Overview().RangeOf(0, {0, 400}), (Mreport::RunOverview::Range{1, 400}));
    EXPECT_EQ(Overview().Span(), (RecordSpan{0, 50}));
    EXPECT_EQ(Overview().accessibleDescription(), "Records 1 to 50 of 400");
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_FALSE(Span().isVisible());
}

TEST_F(WholeRunScreen, The_frame_follows_the_scroll_bar_and_the_page) {
    ViewRun({}, 4200);
    Scroll().setValue(300);
    EXPECT_EQ(Overview().Span(), (RecordSpan{250, 300}));
    Find<QTabBar>(*form, "Pages").setCurrentIndex(1);
    EXPECT_EQ(Overview().Span(), (RecordSpan{4086, 4136}));
}

TEST_F(WholeRunScreen, The_frame_dragged_moves_the_graph_through_the_file) {
    ViewRun({}, 400);
    Drag(At(25), At(225));
    EXPECT_NEAR(static_cast<double>(Overview().Span().first), 200, 3);
    EXPECT_EQ(Overview().Span().Count(), 50);
    EXPECT_EQ(Scroll().value(), Overview().Span().end);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), static_cast<double>(Scroll().value()));
    EXPECT_FALSE(Span().isVisible());
}

TEST_F(WholeRunScreen, The_frame_dragged_onto_another_page_brings_its_records_into_the_graph) {
    ViewRun({}, 4400);
    Drag(At(25), At(4300));
    EXPECT_EQ(Shown().graphPageIndex, 1);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), static_cast<double>(Overview().Span().end));
}

TEST_F(WholeRunScreen, A_frame_made_longer_shows_a_span_of_any_length) {
    ViewRun({}, 400);
    Drag(At(50), At(350));
    EXPECT_TRUE(Span().isVisible());
    EXPECT_FALSE(Graph().isVisible());
    EXPECT_EQ(Span().Shown().span, Overview().Span());
    EXPECT_NEAR(static_cast<double>(Overview().Span().Count()), 350, 6);
    EXPECT_EQ(Span().Shown().series.size(), 3U);
    EXPECT_EQ(Span().Shown().run->RangeOf(0, Overview().Span()).high,
              static_cast<float>(Overview().Span().end));
}

TEST_F(WholeRunScreen, A_span_over_a_page_end_is_shown_as_one) {
    ViewRun({}, 4400);
    Panel().ZoomSpan(1000);
    Fill();
    EXPECT_EQ(Overview().Span(), (RecordSpan{0, 4400}));
    EXPECT_EQ(Span().Shown().run->RangeOf(0, {0, 4400}), (Mreport::RunOverview::Range{1, 4400}));
}

TEST_F(WholeRunScreen, The_scroll_bar_leads_back_to_the_graph_of_records) {
    ViewRun({}, 400);
    Panel().ZoomSpan(4);
    EXPECT_TRUE(Span().isVisible());
    Scroll().setValue(200);
    EXPECT_FALSE(Span().isVisible());
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_EQ(Overview().Span(), (RecordSpan{150, 200}));
}

TEST_F(WholeRunScreen, The_wheel_and_the_keys_make_the_span_longer_and_move_it) {
    ViewRun({}, 400);
    QWheelEvent turn(At(0), Overview().mapToGlobal(At(0)), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Overview(), &turn);
    EXPECT_EQ(Overview().Span().Count(), 63);
    QTest::keyClick(&Overview(), Qt::Key_End);
    EXPECT_EQ(Overview().Span(), (RecordSpan{337, 400}));
    QTest::keyClick(&Overview(), Qt::Key_PageUp);
    EXPECT_EQ(Overview().Span(), (RecordSpan{274, 337}));
    QTest::keyClick(&Overview(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Overview().Span(), (RecordSpan{274, 343}));
    QTest::keyClick(&Overview(), Qt::Key_Home);
    EXPECT_EQ(Overview().Span().first, 0);
}

TEST_F(WholeRunScreen, The_quantities_that_the_file_has_are_offered) {
    ViewRun({}, 60);
    EXPECT_EQ(Offered(), (QStringList{"mV", "pH", "ppm", "mol/l", QString::fromUtf8("°C")}));
    EXPECT_EQ(Quantities().currentText(), "mV");
    MeasurementText redox;
    redox.electrodes = {"Redox"};
    redox.sensors = {"N/A"};
    ViewRun(redox, 60);
    EXPECT_EQ(Offered(), QStringList{"mV"});
}

TEST_F(WholeRunScreen, A_quantity_chosen_shows_in_graph_and_overview) {
    ViewRun({}, 200);
    Scroll().setValue(120);
    Quantities().setCurrentIndex(1);
    Fill();
    EXPECT_EQ(Shown().unitCode, Quantity::pH);
    EXPECT_EQ(Graph().LeftTitle(), "pH");
    EXPECT_EQ(Graph().NumSets(), 1);
    EXPECT_EQ(Panel().Overview().SeriesCount(), 1U);
    EXPECT_EQ(Overview().Span(), (RecordSpan{70, 120})) << "the span stays";
}

TEST_F(WholeRunScreen, A_long_span_stays_when_another_quantity_is_chosen) {
    ViewRun({}, 400);
    Panel().ZoomSpan(4);
    const RecordSpan span = Overview().Span();
    Quantities().setCurrentIndex(1);
    Fill();
    EXPECT_TRUE(Span().isVisible());
    EXPECT_EQ(Span().Shown().span, span);
    EXPECT_EQ(Span().Shown().unit, "pH");
}

TEST_F(WholeRunScreen, By_time_and_on_own_scales_the_same_span_is_drawn_another_way) {
    ViewRun({}, 200);
    Find<QComboBox>(*form, "cboAxis").setCurrentIndex(1);
    EXPECT_TRUE(Span().isVisible());
    EXPECT_EQ(Span().Shown().axis, Mreport::RunAxis::time);
    EXPECT_EQ(Span().Shown().span, (RecordSpan{0, 50}));
    Find<QComboBox>(*form, "cboAxis").setCurrentIndex(0);
    EXPECT_TRUE(Graph().isVisible());
    Find<QCheckBox>(*form, "chkOwnScales").setChecked(true);
    EXPECT_TRUE(Span().isVisible());
    EXPECT_TRUE(Span().Shown().ownScales);
}

TEST_F(WholeRunScreen, A_logarithmic_scale_is_for_concentrations) {
    ViewRun({}, 60);
    auto& log = Find<QCheckBox>(*form, "chkLog");
    EXPECT_FALSE(log.isEnabled());
    Quantities().setCurrentIndex(2);
    EXPECT_TRUE(log.isEnabled());
    log.setChecked(true);
    EXPECT_TRUE(Span().isVisible());
    EXPECT_TRUE(Span().Shown().log);
    Quantities().setCurrentIndex(0);
    EXPECT_TRUE(Graph().isVisible()) << "mV stays linear";
}

TEST_F(WholeRunScreen, A_logarithmic_axis_has_its_powers_of_ten_in_one_style) {
    MeasurementText text;
    text.cell = [](int record, const std::string&, int) {
        return std::string(record % 2 == 0 ? "0.5" : "5E+07");
    };
    ViewRun(text, 60);
    Quantities().setCurrentIndex(2);
    Find<QCheckBox>(*form, "chkLog").setChecked(true);
    const QCPAxis& axis = *Span().findChild<QCustomPlot*>()->yAxis;
    QVector<double> ticks;
    QVector<QString> labels;
    axis.ticker()->generate(axis.range(), QLocale::c(), axis.numberFormat().at(0),
                            axis.numberPrecision(), ticks, nullptr, &labels);
    EXPECT_GE(labels.size(), 3);
    for (const QString& label : labels)
        EXPECT_TRUE(label.startsWith("1e")) << label.toStdString();
}

TEST_F(WholeRunScreen, The_way_a_span_is_drawn_is_remembered) {
    ViewRun({}, 60);
    Find<QComboBox>(*form, "cboAxis").setCurrentIndex(1);
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    Report again(run);
    EXPECT_EQ(Find<QComboBox>(again, "cboAxis").currentText(), "Time");
    EXPECT_TRUE(Find<QCheckBox>(again, "chkStatistics").isChecked());
    EXPECT_FALSE(Find<QCheckBox>(again, "chkOwnScales").isChecked());
}

TEST_F(WholeRunScreen, The_statistics_are_those_of_the_span_and_are_copied_as_a_table) {
    ViewRun({}, 60);
    EXPECT_FALSE(Statistics().isVisible());
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    EXPECT_TRUE(Statistics().isVisible());
    EXPECT_EQ(Statistics().rowCount(), 3);
    EXPECT_EQ(Statistics().item(0, 0)->text(), "50");
    EXPECT_EQ(Statistics().item(0, 1)->text(), "25.5"); // the mean of 1 to 50
    EXPECT_EQ(Statistics().item(0, 4)->text(), "50");
    Scroll().setValue(60);
    EXPECT_EQ(Statistics().item(0, 1)->text(), "35.5");

    Statistics().setFocus();
    QTest::keyClick(&Statistics(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], "\tn\tMean\tSD\tSmallest\tLargest\tDrift, mV/h");
    EXPECT_TRUE(lines[1].startsWith("Ch. 1\t50\t35.5\t14.6\t11\t60\t")) << lines[1].toStdString();
}

TEST_F(WholeRunScreen, Two_cursors_tell_what_lies_between_them) {
    ViewRun({}, 400);
    Panel().ZoomSpan(8);
    Fill();
    Span().setFocus();
    QTest::keyClick(&Span(), Qt::Key_1);
    QTest::keyClick(&Span(), Qt::Key_2);
    for (int step = 0; step < 10; ++step)
        QTest::keyClick(&Span(), Qt::Key_Right);
    EXPECT_TRUE(Find<QLineEdit>(*form, "txtInfo")
                    .text()
                    .startsWith("Records 201 to 211, 0:00:00: Ch. 1 +10.0 mV"))
        << Find<QLineEdit>(*form, "txtInfo").text().toStdString();
    EXPECT_EQ(Find<QLineEdit>(*form, "txtInfo").cursorPosition(), 0) << "its beginning is seen";
}

TEST_F(WholeRunScreen, A_flag_leads_to_the_record_with_the_comment) {
    MeasurementText text;
    text.comment = [](int number) { return number == 301 ? "shaken" : ""; };
    ViewRun(text, 400);
    QTest::mouseClick(&Overview(), Qt::LeftButton, {}, {At(300).x() + 3, 4});
    EXPECT_EQ(List(0).CurrentLine(), MeasurementText::headerLines + 300 * 8);
    EXPECT_LE(Overview().Span().first, 300);
    EXPECT_GT(Overview().Span().end, 300);
}

TEST_F(WholeRunScreen, Nothing_of_a_closed_file_is_looked_at) {
    ViewRun({}, 400);
    Panel().ZoomSpan(4);
    form->close();
    EXPECT_FALSE(Panel().isEnabled());
    QApplication::processEvents();
    Show(*form);
    Overview().grab();
    EXPECT_TRUE(Graph().isVisible());
}

TEST_F(WholeRunScreen, Another_file_starts_with_its_own_span) {
    ViewRun({}, 400);
    Panel().ZoomSpan(4);
    View(MeasurementText().File(20), "other.4ch");
    Fill();
    EXPECT_EQ(Overview().Span(), (RecordSpan{0, 20}));
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_EQ(Panel().Overview().Span().Count(), 20);
}

TEST_F(WholeRunScreen, A_file_without_records_has_an_empty_overview) {
    ViewRun({}, 0);
    EXPECT_EQ(Panel().Overview().Span().Count(), 0);
    Overview().grab();
    QTest::keyClick(&Overview(), Qt::Key_Plus);
    EXPECT_TRUE(Graph().isVisible());
}

TEST_F(WholeRunScreen, With_everything_shown_the_form_still_fits_a_small_screen) {
    ViewRun({}, 400);
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    Settle();
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
    Panel().ZoomSpan(4);
    Settle();
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
}

TEST_F(WholeRunScreen, Every_control_has_a_name_and_a_mnemonic_of_its_own) {
    ViewRun({}, 400);
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>());
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
}
