#include "screens/controls/GraphControl.h"

#include "screens/controls/SeriesStyle.h"
#include "screens/support/ScreenTest.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <qcustomplot.h>

#include <cmath>
#include <set>

namespace {

class GraphTest : public ScreenTest {
protected:
    GraphControl graph;

    GraphTest() { graph.resize(800, 500); }

    /// Two sets of ten points; the second lies one unit higher.
    void DrawTwoSets() {
        graph.SetNumSets(2);
        graph.SetNumPoints(10);
        for (int set = 1; set <= 2; ++set) {
            graph.SetThisSet(set);
            graph.SetLegend(set, "Ch. " + std::to_string(set));
            for (int point = 1; point <= 10; ++point) {
                graph.SetData(point, point + set);
                graph.SetLabel(point, std::to_string(point));
            }
        }
        graph.SetDrawMode(3);
        Show(graph);
        DrawNow();
    }

    void DrawNow() { graph.findChild<QCustomPlot*>()->replot(QCustomPlot::rpImmediateRefresh); }
    QCustomPlot& Curves() { return *graph.findChild<QCustomPlot*>(); }

    /// Turns the wheel towards the user's screen at a place of the plot.
    void Wheel(const QPoint& place) {
        QWheelEvent wheel(place, Plot().mapToGlobal(place), {}, {0, 240}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Plot(), &wheel);
        Settle();
    }

    QWidget& Plot() { return *graph.findChild<QWidget*>(); }
    QPoint Centre() { return Plot().rect().center(); }
};

/// Distance of two colours as CIELAB, seen normally and without red or green receptors. Matrices:
/// Machado, Oliveira and Fernandes, "A Physiologically-based Model for Simulation of Color Vision
/// Deficiency", 2009, severity 1.
class Eye {
public:
    enum class Sight { normal, protan, deutan };

    static double Distance(const QColor& a, const QColor& b, Sight sight) {
        const auto one = Lab(a, sight);
        const auto other = Lab(b, sight);
        double sum = 0;
        for (std::size_t i = 0; i < 3; ++i)
            sum += (one[i] - other[i]) * (one[i] - other[i]);
        return std::sqrt(sum);
    }

private:
    using Triple = std::array<double, 3>;
    using Matrix = std::array<Triple, 3>;

    static Triple Times(const Matrix& m, const Triple& v) {
        Triple r{};
        for (std::size_t i = 0; i < 3; ++i)
            r[i] = std::clamp(m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2], 0.0, 1.0);
        return r;
    }
    static Triple Lab(const QColor& colour, Sight sight) {
        const auto linear = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        Triple rgb = {linear(colour.redF()), linear(colour.greenF()), linear(colour.blueF())};
        const Matrix protan = {Triple{0.152286, 1.052583, -0.204868},
                               Triple{0.114503, 0.786281, 0.099216},
                               Triple{-0.003882, -0.048116, 1.051998}};
        const Matrix deutan = {Triple{0.367322, 0.860646, -0.227968},
                               Triple{0.280085, 0.672501, 0.047413},
                               Triple{-0.011820, 0.042940, 0.968881}};
        if (sight != Sight::normal)
            rgb = Times(sight == Sight::protan ? protan : deutan, rgb);
        const auto f = [](double t) {
            return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116;
        };
        const double x =
            f((0.4124564 * rgb[0] + 0.3575761 * rgb[1] + 0.1804375 * rgb[2]) / 0.95047);
        const double y = f(0.2126729 * rgb[0] + 0.7151522 * rgb[1] + 0.0721750 * rgb[2]);
        const double z =
            f((0.0193339 * rgb[0] + 0.1191920 * rgb[1] + 0.9503041 * rgb[2]) / 1.08883);
        return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
    }
};

QPalette PaletteOn(const QColor& base) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    return palette;
}

} // namespace

TEST_F(GraphTest, Eight_colours_are_told_apart_without_seeing_red_or_green) {
    for (const QColor& base : {QColor(Qt::white), QColor(30, 30, 30)})
        for (const auto sight : {Eye::Sight::normal, Eye::Sight::protan, Eye::Sight::deutan})
            for (int a = 0; a < SeriesStyle::count; ++a)
                for (int b = a + 1; b < SeriesStyle::count; ++b)
                    EXPECT_GT(Eye::Distance(SeriesStyle::Colour(a, PaletteOn(base)),
                                            SeriesStyle::Colour(b, PaletteOn(base)), sight),
                              30)
                        << a << " and " << b;
}

TEST_F(GraphTest, A_click_on_a_point_names_set_and_point) {
    DrawTwoSets();
    QSignalSpy clicks(&graph, &GraphControl::PointClicked);
    QSignalSpy hovers(&graph, &GraphControl::PointHovered);
    // Every point of the graph is found by walking over it with the mouse.
    std::set<std::pair<int, int>> found;
    for (int x = 0; x < Plot().width(); x += 3)
        for (int y = 0; y < Plot().height(); y += 3)
            QTest::mouseMove(&Plot(), QPoint(x, y));
    for (const auto& hover : hovers)
        if (hover[0].toInt() != 0)
            found.emplace(hover[0].toInt(), hover[1].toInt());
    EXPECT_EQ(found.size(), 20U);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(GraphTest, Filler_points_are_no_values) {
    graph.SetNumSets(1);
    graph.SetNumPoints(10);
    graph.SetThisSet(1);
    graph.SetLegend(1, "Ch. 1");
    for (int point = 1; point <= 7; ++point) {
        graph.SetData(point, 5);
        graph.SetExtra(point, 0);
    }
    for (int point = 8; point <= 10; ++point)
        graph.SetExtra(point, 1);
    graph.SetDrawMode(3);
    Show(graph);
    DrawNow();
    QSignalSpy hovers(&graph, &GraphControl::PointHovered);
    graph.setFocus();
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&graph, Qt::Key_Right);
    ASSERT_FALSE(hovers.empty());
    EXPECT_EQ(hovers.last()[1].toInt(), 7);
}

TEST_F(GraphTest, The_keyboard_walks_the_points_and_tells_about_one) {
    DrawTwoSets();
    QSignalSpy clicks(&graph, &GraphControl::PointClicked);
    QTest::keyClick(&graph, Qt::Key_Right);
    QTest::keyClick(&graph, Qt::Key_Right);
    QTest::keyClick(&graph, Qt::Key_Right);
    QTest::keyClick(&graph, Qt::Key_Up);
    QTest::keyClick(&graph, Qt::Key_Return);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0][0].toInt(), 2);
    EXPECT_GE(clicks[0][1].toInt(), 3);
    EXPECT_EQ(graph.DataGetAmp(2, 3), 5.0);
}

TEST_F(GraphTest, A_reset_clears_the_values_and_keeps_the_sets) {
    DrawTwoSets();
    graph.SetDataReset(9);
    graph.SetDrawMode(3);
    EXPECT_EQ(graph.NumSets(), 2);
    EXPECT_EQ(graph.DataGetAmp(1, 1), 0.0);
    QSignalSpy hovers(&graph, &GraphControl::PointHovered);
    QTest::keyClick(&graph, Qt::Key_Right);
    EXPECT_EQ(hovers.count(), 0);
}

TEST_F(GraphTest, The_wheel_zooms_and_a_double_click_returns) {
    DrawTwoSets();
    const QImage whole = graph.grab().toImage();
    QWheelEvent wheel(Centre(), Plot().mapToGlobal(Centre()), {}, {0, 240}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&Plot(), &wheel);
    Settle();
    EXPECT_NE(graph.grab().toImage(), whole);
    QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, Plot().rect().bottomLeft() + QPoint(2, -2));
    Settle();
    DrawNow();
    EXPECT_EQ(graph.grab().toImage(), whole);
}

TEST_F(GraphTest, On_paper_the_graph_is_white_in_a_dark_palette_too) {
    QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));
    graph.setPalette(dark);
    DrawTwoSets();
    QImage paper(400, 300, QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    graph.PaintOnPaper(painter, QRectF(0, 0, 400, 300));
    painter.end();
    EXPECT_EQ(paper.pixelColor(1, 298), QColor(Qt::white));
    int inked = 0;
    for (int x = 0; x < 400; ++x)
        for (int y = 0; y < 300; ++y)
            inked += paper.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
    EXPECT_GT(inked, 500);
    EXPECT_LT(inked, 60000) << "a graph, not a filled page";
}

TEST_F(GraphTest, The_wheel_over_an_axis_zooms_that_axis_alone) {
    DrawTwoSets();
    const QRect inside = Curves().axisRect()->rect();
    const QCPRange x = Curves().xAxis->range();
    const QCPRange y = Curves().yAxis->range();
    Wheel({inside.center().x(), inside.bottom() + 8});
    EXPECT_LT(Curves().xAxis->range().size(), x.size());
    EXPECT_EQ(Curves().yAxis->range(), y);
    graph.ResetZoom();
    Wheel({inside.left() - 8, inside.center().y()});
    EXPECT_EQ(Curves().xAxis->range(), x);
    EXPECT_LT(Curves().yAxis->range().size(), y.size());
    graph.ResetZoom();
    Wheel(inside.center());
    EXPECT_LT(Curves().xAxis->range().size(), x.size());
    EXPECT_LT(Curves().yAxis->range().size(), y.size());
}

TEST_F(GraphTest, A_point_that_is_added_leaves_the_user_s_zoom_and_a_new_span_ends_it) {
    DrawTwoSets();
    const QCPRange whole = Curves().xAxis->range();
    Wheel(Centre());
    const QCPRange zoomed = Curves().xAxis->range();
    ASSERT_NE(zoomed, whole);
    graph.SetThisSet(1);
    graph.SetData(10, 100);
    graph.SetDrawMode(3);
    EXPECT_EQ(Curves().xAxis->range(), zoomed);
    graph.SetDataReset(9);
    graph.SetDrawMode(3);
    EXPECT_EQ(Curves().xAxis->range(), whole);
}

TEST_F(GraphTest, The_keyboard_begins_with_the_first_set_that_has_values) {
    DrawTwoSets();
    for (int point = 1; point <= 10; ++point) {
        graph.SetThisSet(1);
        graph.SetExtra(point, 1);
    }
    graph.SetDrawMode(3);
    QSignalSpy hovers(&graph, &GraphControl::PointHovered);
    QTest::keyClick(&graph, Qt::Key_Right);
    ASSERT_EQ(hovers.count(), 1);
    EXPECT_EQ(hovers[0][0].toInt(), 2);
    EXPECT_EQ(hovers[0][1].toInt(), 1);
}

TEST_F(GraphTest, A_set_has_the_colour_of_what_it_shows) {
    DrawTwoSets();
    graph.SetStyle(1, 4);
    graph.SetStyle(2, 1);
    graph.SetDrawMode(3);
    EXPECT_EQ(Curves().graph(0)->pen().color(), SeriesStyle::Colour(4, graph.palette()));
    EXPECT_EQ(Curves().graph(1)->pen().color(), SeriesStyle::Colour(1, graph.palette()));
}

TEST_F(GraphTest, A_graph_without_values_shows_the_reason) {
    DrawTwoSets();
    graph.SetEmptyText("No channel is selected.");
    const QImage full = graph.grab().toImage();
    graph.SetDataReset(9);
    graph.SetDrawMode(3);
    DrawNow();
    auto* text = Curves().findChild<QCPItemText*>();
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->visible());
    EXPECT_EQ(text->text(), "No channel is selected.");
    DrawTwoSets();
    EXPECT_FALSE(text->visible());
}
