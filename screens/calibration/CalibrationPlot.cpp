#include "screens/calibration/CalibrationPlot.h"

#include "platform/qt/Text.h"

#include <QEvent>

namespace {

constexpr double markSize = 9;
constexpr double lineWidth = 2;
constexpr double marginOfRange = 0.1; ///< of the range of the points, on either side

struct PlotColours {
    QColor area, grid, subGrid, line, mark;
};

PlotColours ColoursFor(const QPalette& palette) {
    if (palette.color(QPalette::Window).lightnessF() < 0.5F)
        return {QColor(70, 70, 70), QColor(190, 190, 190), QColor(105, 105, 105),
                QColor(100, 181, 246), QColor(255, 183, 77)};
    return {QColor(214, 214, 214), Qt::white, QColor(190, 190, 190), QColor(13, 71, 161),
            QColor(191, 54, 12)};
}

QString AxisTitle(Quantity standards) {
    const QString label = Text::ToQt(Quantities::Label(standards));
    return standards == Quantity::pH ? label : "log10 of the concentration in " + label;
}

/// A single point or a flat line still gets an axis around it.
QCPRange WithMargin(QCPRange range) {
    const double margin = range.size() > 0 ? range.size() * marginOfRange : 1;
    return {range.lower - margin, range.upper + margin};
}

} // namespace

CalibrationPlot::CalibrationPlot(QWidget* parent)
    : QCustomPlot(parent), line_(new QCPCurve(xAxis, yAxis)) {
    axisRect()->setupFullAxesBox(true);
    for (QCPAxis* axis : {xAxis, yAxis})
        axis->grid()->setSubGridVisible(true);
    yAxis->setLabel("mV");
    setMinimumSize(170, 160);
    setFocusPolicy(Qt::NoFocus);
    TakeColours();
}

void CalibrationPlot::ShowCurve(const CalibrationCurve& curve) {
    QVector<double> x;
    QVector<double> y;
    for (const CalibrationCurve::Point& point : curve.points) {
        x.append(point.x);
        y.append(point.potential_mV);
    }
    line_->setData(x, y);
    xAxis->setLabel(AxisTitle(curve.standards));
    setAccessibleDescription(
        QString("%1 calibration points, mV over %2").arg(x.size()).arg(xAxis->label()));
    FitAxes();
    replot();
}

void CalibrationPlot::FitAxes() {
    bool found = false;
    const QCPRange keys = line_->getKeyRange(found);
    if (!found)
        return;
    xAxis->setRange(WithMargin(keys));
    yAxis->setRange(WithMargin(line_->getValueRange(found)));
}

void CalibrationPlot::TakeColours() {
    const PlotColours colours = ColoursFor(palette());
    const QColor text = palette().color(QPalette::WindowText);
    setBackground(palette().color(QPalette::Window));
    axisRect()->setBackground(colours.area);
    for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
        axis->setBasePen(QPen(text));
        axis->setTickPen(QPen(text));
        axis->setSubTickPen(QPen(text));
        axis->setLabelColor(text);
        axis->setTickLabelColor(text);
        axis->setLabelFont(font());
        axis->setTickLabelFont(font());
        axis->grid()->setPen(QPen(colours.grid, 1));
        axis->grid()->setSubGridPen(QPen(colours.subGrid, 1, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(colours.grid, 2));
    }
    line_->setPen(QPen(colours.line, lineWidth));
    line_->setScatterStyle(
        QCPScatterStyle(QCPScatterStyle::ssDisc, colours.mark, colours.mark, markSize));
}

void CalibrationPlot::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        TakeColours();
        replot(QCustomPlot::rpQueuedReplot);
    }
}
