#include "screens/calibration/CalibrationPlot.h"

#include "platform/qt/Text.h"
#include "screens/calibration/DecadeTicker.h"
#include "screens/calibration/PlotStyle.h"

#include <QEvent>

namespace {

constexpr double markSize = 9;

QString AxisTitle(Quantity standards) {
    const QString label = Text::ToQt(Quantities::Label(standards));
    return standards == Quantity::pH ? label : "Concentration (" + label + ")";
}

/// A single point or a flat line still gets an axis around it.
QCPRange AroundPoints(QCPRange range) {
    const double margin = range.size() > 0 ? range.size() * PlotStyle::marginOfRange : 1;
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
    if (curve.standards == Quantity::pH)
        xAxis->setTicker(QSharedPointer<QCPAxisTicker>::create());
    else
        xAxis->setTicker(QSharedPointer<DecadeTicker>::create());
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
    xAxis->setRange(AroundPoints(keys));
    yAxis->setRange(AroundPoints(line_->getValueRange(found)));
}

void CalibrationPlot::TakeColours() {
    const PlotStyle style = PlotStyle::For(palette());
    style.Dress(*this);
    line_->setPen(QPen(style.line, PlotStyle::lineWidth));
    line_->setScatterStyle(
        QCPScatterStyle(QCPScatterStyle::ssDisc, style.mark, style.mark, markSize));
}

void CalibrationPlot::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        TakeColours();
        replot(QCustomPlot::rpQueuedReplot);
    }
}
