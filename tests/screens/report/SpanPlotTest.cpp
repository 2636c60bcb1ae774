#include "screens/report/WholeRunScreen.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <qcustomplot.h>

TEST_F(WholeRunScreen, A_short_span_names_each_record_and_each_second_once) {
    ViewRun({}, 60);
    Panel().ZoomSpan(0.04); // two records
    Fill();
    ASSERT_EQ(Overview().Span().Count(), 2);
    EXPECT_EQ(LabelsBelow(), (QStringList{"25", "26"}));
    Find<QComboBox>(*form, "cboAxis").setCurrentIndex(1);
    QStringList once = LabelsBelow();
    ASSERT_FALSE(once.isEmpty());
    once.removeDuplicates();
    EXPECT_EQ(LabelsBelow(), once);
}

TEST_F(WholeRunScreen, A_span_without_values_says_why) {
    MeasurementText text;
    text.cell = [](int, const std::string& row, int) {
        return std::string(row == "ppm" ? "0.0" : row == "pH" ? "NA" : "1.0");
    };
    ViewRun(text, 400);
    const auto& reason = *Span().findChild<QCPItemText*>();
    Panel().ZoomSpan(4);
    Fill();
    ASSERT_TRUE(Span().isVisible());
    EXPECT_FALSE(reason.visible());
    Quantities().setCurrentText("pH");
    Fill();
    EXPECT_TRUE(reason.visible());
    EXPECT_EQ(reason.text(), "These records hold no value in pH of what is selected.");
    Quantities().setCurrentText("ppm");
    Fill();
    EXPECT_FALSE(reason.visible());
    Find<QCheckBox>(*form, "chkLog").setChecked(true);
    Fill();
    EXPECT_TRUE(reason.visible());
    EXPECT_EQ(reason.text(), "No value is above zero, where this scale begins.");
}

TEST_F(WholeRunScreen, On_a_low_form_the_graph_keeps_room_for_its_curves) {
    constexpr int least_px = 30;
    form->resize(512, 364); // half of a small screen, as at a doubled scale
    ViewRun({}, 400);
    Settle();
    auto& plot = *Graph().findChild<QCustomPlot*>();
    plot.replot();
    EXPECT_GE(plot.axisRect()->height(), least_px);
    Panel().ZoomSpan(4);
    Fill();
    Settle();
    Span().Plot().replot();
    EXPECT_GE(Span().Plot().axisRect()->height(), least_px);
    form->resize(900, 700);
    Settle();
    EXPECT_TRUE(Span().Plot().plotLayout()->element(0, 0)->visible());
    const auto& head = Find<QPlainTextEdit>(*form, "txtHead");
    EXPECT_GE(head.viewport()->height(), 4 * QFontMetrics(head.font()).lineSpacing());
}
