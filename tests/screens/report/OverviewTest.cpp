#include "screens/controls/SeriesStyle.h"
#include "screens/report/WholeRunScreen.h"

#include <QCheckBox>
#include <QHelpEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <qcustomplot.h>

#include <array>
#include <cmath>

namespace {

using Mreport::RecordSpan;

class OverviewScreen : public WholeRunScreen {
protected:
    /// How much of the ink lies on a pixel, 0 to 1, where ink and paper alone are mixed there.
    static double Inked(const QColor& pixel, const QColor& ink, const QColor& paper) {
        const std::array<double, 3> wanted = {
            ink.redF() - paper.redF(), ink.greenF() - paper.greenF(), ink.blueF() - paper.blueF()};
        const std::array<double, 3> found = {pixel.redF() - paper.redF(),
                                             pixel.greenF() - paper.greenF(),
                                             pixel.blueF() - paper.blueF()};
        double product = 0;
        double square = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            product += wanted[i] * found[i];
            square += wanted[i] * wanted[i];
        }
        const double share = product / square;
        double rest = 0;
        for (std::size_t i = 0; i < 3; ++i)
            rest += std::abs(found[i] - share * wanted[i]);
        constexpr double otherColour = 0.15;
        return rest < otherColour ? share : 0;
    }

    /// The pixels of a channel's line in a column of the strip, from the top, between the lines of
    /// the frame; its shade is out of the way. Smoothed lines are never all of their colour.
    std::vector<int> PixelsOf(int channel, int x) {
        Overview().SetSpan(Panel().Overview().Span());
        const QImage strip = Overview().grab().toImage().scaled(
            Overview().size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QColor ink = SeriesStyle::Colour(channel - 1, Overview().palette());
        const QColor paper = Overview().palette().color(QPalette::Base);
        constexpr int frame_px = 4;
        std::vector<int> found;
        for (int y = frame_px; y < strip.height() - frame_px; ++y)
            if (Inked(strip.pixelColor(x, y), ink, paper) > 0.3)
                found.push_back(y);
        return found;
    }
    static void Turn(QWidget& over, const QPoint& place, int angle, Qt::KeyboardModifiers keys) {
        QWheelEvent turn(place, over.mapToGlobal(place), {}, {0, angle}, Qt::NoButton, keys,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &turn);
    }
    void BeLive() {
        run.targetFile = File();
        run.measuring = true;
    }
    void RecordOn(int first, int last) {
        for (int number = first; number <= last; ++number)
            Append(MeasurementText().Record(number));
        run.RecordWritten();
        Fill();
    }
    static QCustomPlot& PlotOf(const QWidget& graph) { return *graph.findChild<QCustomPlot*>(); }
};

} // namespace

TEST_F(OverviewScreen, A_short_run_has_its_records_in_the_middle_of_their_room) {
    ViewRun({}, 2);
    const int half = Overview().width() / 2; // the room of one record
    EXPECT_TRUE(PixelsOf(1, half / 4).empty());
    EXPECT_FALSE(PixelsOf(1, half).empty());
    EXPECT_FALSE(PixelsOf(1, half * 3 / 2 - 1).empty());
    EXPECT_TRUE(PixelsOf(1, half * 7 / 4).empty());
}

TEST_F(OverviewScreen, An_edge_dragged_moves_that_end_of_the_span) {
    ViewRun({}, 400);
    Scroll().setValue(200);
    Drag(At(150), At(50));
    EXPECT_NEAR(static_cast<double>(Overview().Span().first), 50, 3);
    EXPECT_EQ(Overview().Span().end, 200);
    Drag(At(200), At(130));
    EXPECT_NEAR(static_cast<double>(Overview().Span().end), 130, 3);
    EXPECT_TRUE(Span().isVisible());
}

TEST_F(OverviewScreen, A_click_beside_the_frame_brings_it_there) {
    ViewRun({}, 400);
    QTest::mouseClick(&Overview(), Qt::LeftButton, {}, At(300));
    EXPECT_NEAR(static_cast<double>(Overview().Span().first), 275, 2);
    EXPECT_EQ(Overview().Span().Count(), 50);
}

TEST_F(OverviewScreen, The_keys_do_what_the_mouse_does) {
    ViewRun({}, 400);
    Scroll().setValue(200);
    QTest::keyClick(&Overview(), Qt::Key_Left);
    EXPECT_EQ(Overview().Span(), (RecordSpan{145, 195}));
    QTest::keyClick(&Overview(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Overview().Span(), (RecordSpan{145, 190}));
    QTest::keyClick(&Overview(), Qt::Key_Minus);
    EXPECT_EQ(Overview().Span().Count(), 57);
    QTest::keyClick(&Overview(), Qt::Key_Plus);
    EXPECT_EQ(Overview().Span().Count(), 45);
    QTest::keyClick(&Overview(), Qt::Key_PageDown);
    EXPECT_EQ(Overview().Span().Count(), 45);
    EXPECT_GT(Overview().Span().first, 180);
}

TEST_F(OverviewScreen, Shift_and_the_wheel_over_the_graph_of_records_make_the_span_longer) {
    ViewRun({}, 400);
    QWidget& plot = PlotOf(Graph());
    const QCPRange whole = PlotOf(Graph()).yAxis->range();
    Turn(plot, plot.rect().center(), -120, Qt::ShiftModifier);
    Fill();
    EXPECT_EQ(Overview().Span().Count(), 63);
    EXPECT_TRUE(Span().isVisible());
    EXPECT_EQ(PlotOf(Graph()).yAxis->range(), whole) << "the graph of records is not zoomed";
}

TEST_F(OverviewScreen, A_flag_tells_its_comment_as_it_was_typed) {
    MeasurementText text;
    text.comment = [](int number) { return number == 301 ? "<b>shaken</b> & stirred" : ""; };
    ViewRun(text, 400);
    const QPoint flag(At(300).x() + 3, 4);
    QHelpEvent over(QEvent::ToolTip, flag, Overview().mapToGlobal(flag));
    QApplication::sendEvent(&Overview(), &over);
    EXPECT_EQ(QToolTip::text(), "Record 301: &lt;b&gt;shaken&lt;/b&gt; &amp; stirred");
    const QPoint beside(At(200).x(), 4);
    QHelpEvent away(QEvent::ToolTip, beside, Overview().mapToGlobal(beside));
    QApplication::sendEvent(&Overview(), &away);
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })) << "no flag, no text";
}

TEST_F(OverviewScreen, Records_without_a_value_leave_a_gap) {
    MeasurementText text;
    text.electrodes = {"Ca"};
    text.sensors = {"N/A"};
    text.cell = [](int record, const std::string&, int) {
        return record > 150 && record <= 250 ? std::string("NA") : std::to_string(record);
    };
    ViewRun(text, 400);
    EXPECT_FALSE(PixelsOf(1, At(75).x()).empty());
    EXPECT_TRUE(PixelsOf(1, At(200).x()).empty());
    EXPECT_FALSE(PixelsOf(1, At(325).x()).empty());
}

TEST_F(OverviewScreen, The_strip_goes_logarithmic_with_the_graph) {
    MeasurementText text;
    text.electrodes = {"Ca"};
    text.sensors = {"N/A"};
    text.cell = [](int record, const std::string&, int) {
        return std::string(record <= 130 ? "1" : record <= 270 ? "10" : "100");
    };
    ViewRun(text, 400);
    Quantities().setCurrentText("ppm");
    Fill();
    const auto share = [this](std::int64_t place) { // 0 at the largest value, 1 at the smallest
        const double top = PixelsOf(1, At(350).x()).at(0);
        const double bottom = PixelsOf(1, At(50).x()).at(0);
        return (PixelsOf(1, At(place).x()).at(0) - top) / (bottom - top);
    };
    EXPECT_NEAR(share(200), 10.0 / 11, 0.05);
    Find<QCheckBox>(*form, "chkLog").setChecked(true);
    EXPECT_NEAR(share(200), 0.5, 0.05);
    Find<QCheckBox>(*form, "chkOwnScales").setChecked(true);
    EXPECT_NEAR(share(200), 0.5, 0.05) << "its own scale is logarithmic, too";
}

TEST_F(OverviewScreen, The_overview_grows_with_a_file_that_is_recorded) {
    BeLive();
    ViewRun({}, 60);
    RecordOn(61, 64);
    EXPECT_EQ(Panel().Overview().Span(), (RecordSpan{0, 64}));
    EXPECT_EQ(Panel().Overview().RangeOf(0, {0, 64}), (Mreport::RunOverview::Range{1, 64}));
    EXPECT_TRUE(Overview().accessibleDescription().endsWith(" of 64"));
}

TEST_F(OverviewScreen, The_whole_run_stays_whole_while_it_grows) {
    BeLive();
    ViewRun({}, 60);
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    Panel().ZoomSpan(100);
    Fill();
    ASSERT_EQ(Overview().Span(), (RecordSpan{0, 60}));
    RecordOn(61, 70);
    EXPECT_EQ(Overview().Span(), (RecordSpan{0, 70}));
    EXPECT_EQ(Span().Shown().span, (RecordSpan{0, 70}));
    EXPECT_EQ(Statistics().item(0, 0)->text(), "70");
    EXPECT_EQ(Statistics().item(0, 1)->text(), "35.5");
}

TEST_F(OverviewScreen, A_part_that_is_looked_at_stays_while_the_run_grows) {
    BeLive();
    ViewRun({}, 400);
    Panel().ZoomSpan(2);
    Fill();
    const RecordSpan part = Overview().Span();
    RecordOn(401, 405);
    EXPECT_EQ(Overview().Span(), part);
    EXPECT_TRUE(Span().isVisible());
}

TEST_F(OverviewScreen, A_live_file_shows_another_quantity_too) {
    BeLive();
    ViewRun({}, 60);
    Choose(ReportMenus::automaticUpdate);
    Quantities().setCurrentText("pH");
    Fill();
    EXPECT_EQ(Graph().LeftTitle(), "pH");
    RecordOn(61, 61);
    EXPECT_EQ(Graph().DataGetAmp(1, 11), 1.5) << "channel 2, in the block that began with 51";
    EXPECT_EQ(Panel().Overview().Span().Count(), 61);
}

TEST_F(OverviewScreen, A_channel_has_one_colour_and_one_mark_everywhere) {
    ViewRun({}, 400);
    Find<QCheckBox>(*form, "chkStatistics").setChecked(true);
    Quantities().setCurrentText("pH"); // channel 2 alone
    Fill();
    const QColor colour = SeriesStyle::Colour(1, form->palette());
    const auto shape = SeriesStyle::Mark(1, form->palette()).shape();
    EXPECT_EQ(PlotOf(Graph()).graph(0)->pen().color(), colour);
    EXPECT_EQ(PlotOf(Graph()).graph(0)->scatterStyle().shape(), shape);
    Panel().ZoomSpan(4);
    Fill();
    EXPECT_EQ(PlotOf(Span()).graph(0)->pen().color(), colour);
    EXPECT_EQ(PlotOf(Span()).graph(0)->scatterStyle().shape(), shape);
    EXPECT_FALSE(PixelsOf(2, At(200).x()).empty());
    const QIcon mark = Statistics().verticalHeaderItem(0)->icon();
    EXPECT_EQ(mark.pixmap(16).toImage(),
              SeriesStyle::Icon(1, Statistics().palette()).pixmap(16).toImage());
}

TEST_F(OverviewScreen, The_graph_is_exported_and_printed_as_it_is_shown) {
    ViewRun({}, 400);
    Panel().ZoomSpan(100);
    Fill();
    platform.dialogs.ExpectFileDialog(
        [this](const platform::FileDialogRequest&) { return File("run.svg"); });
    Choose(ReportMenus::exportGraph);
    const std::string svg = ReadBytes(File("run.svg"));
    EXPECT_NE(svg.find(">400<"), std::string::npos) << "the end of the whole run";
    EXPECT_NE(svg.find("Ch. 3"), std::string::npos);
    Choose(ReportMenus::printShownGraph);
    EXPECT_EQ(platform.printing.documents.at(0).pictures.size(), 1U);
    EXPECT_TRUE(Span().isVisible());
    EXPECT_EQ(Status(), "Ready: graph exported");
}

TEST_F(OverviewScreen, The_records_shown_are_exported_alone_where_that_is_chosen) {
    ViewRun({}, 400);
    Scroll().setValue(200);
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest& request) {
        *request.chosenFilter = 2;
        return File("part.csv");
    });
    Choose(ReportMenus::exportRecords);
    EXPECT_EQ(Status(), "Ready: 50 records exported");
    const std::string csv = ReadBytes(File("part.csv"));
    EXPECT_NE(csv.find("\r\n151,"), std::string::npos);
    EXPECT_EQ(csv.find("\r\n150,"), std::string::npos);
    EXPECT_EQ(csv.find("\r\n201,"), std::string::npos);
}
