#include "screens/controls/SpanPlot.h"

#include "screens/controls/SeriesStyle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimeZone>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Mreport::RunAxis;
using Mreport::RunOverview;

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double spaceAboveValues = 0.06; // of the scale
constexpr double zoomStep = 1.25;
constexpr double moveStep = 0.1;       // of the span
constexpr std::size_t fewPoints = 120; // of a series, each with a mark
constexpr double markSize_px = 5;

/// Where a value lies when every series has a scale of its own: 0 to 1.
double OnOwnScale(double value, const RunOverview::Range& scale, bool log) {
    const auto of = [log](double number) { return log ? std::log10(number) : number; };
    const double low = of(scale.low);
    const double height = of(scale.high) - low;
    return height > 0 ? (of(value) - low) / height : 0.5;
}

} // namespace

SpanPlot::SpanPlot(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Graph of a span of records"));
    MakePlot();
    ApplyLook();
}

void SpanPlot::MakePlot() {
    plot_ = new QCustomPlot(this);
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setLocale(QLocale::c());
    plot_->setNoAntialiasingOnDrag(true);
    plot_->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    title_ = new QCPTextElement(plot_);
    plot_->plotLayout()->insertRow(0);
    plot_->plotLayout()->addElement(0, 0, title_);
    auto* row = new QCPLayoutGrid; // the plot's layout owns it
    plot_->plotLayout()->insertRow(1);
    plot_->plotLayout()->addElement(1, 0, row);
    plot_->plotLayout()->setRowStretchFactor(1, 0.001);
    row->setMargins(QMargins(0, 0, 0, 0));
    row->addElement(0, 0, new QCPLayoutElement);
    row->addElement(0, 1, plot_->legend);
    row->addElement(0, 2, new QCPLayoutElement);
    plot_->legend->setFillOrder(QCPLegend::foColumnsFirst);
    plot_->legend->setColumnSpacing(12);
    plot_->legend->setVisible(true);
    plot_->yAxis->setNumberPrecision(6);
    for (QCPItemLine*& line : lines_) {
        line = new QCPItemLine(plot_);
        line->start->setTypeX(QCPItemPosition::ptPlotCoords);
        line->end->setTypeX(QCPItemPosition::ptPlotCoords);
        line->start->setTypeY(QCPItemPosition::ptAxisRectRatio);
        line->end->setTypeY(QCPItemPosition::ptAxisRectRatio);
        line->setVisible(false);
    }
}

void SpanPlot::Show(Picture picture) {
    const bool sameRun = picture.run == picture_.run && picture.span == picture_.span;
    picture_ = std::move(picture);
    if (!sameRun)
        cursors_ = {};
    title_->setText(picture_.title);
    Refresh();
}

void SpanPlot::Refresh() {
    if (picture_.run == nullptr)
        return;
    DrawCurves();
    DrawCursors();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

RunOverview::Range SpanPlot::ScaleOf(std::size_t series) const {
    RunOverview::Range range;
    for (std::size_t group = 0; group < picture_.run->GroupCount(); ++group) {
        const RunOverview::Range& values = picture_.run->At(group, series);
        if (!values.Any())
            continue;
        if (!picture_.log || values.low > 0)
            range.Take(values.low);
        if (!picture_.log || values.high > 0)
            range.Take(values.high);
    }
    return range;
}

void SpanPlot::DrawCurves() {
    plot_->clearGraphs();
    RunOverview::Range common;
    const auto width = static_cast<std::size_t>(std::max(plot_->axisRect()->width(), 100));
    for (std::size_t s = 0; s < picture_.series.size(); ++s) {
        const RunOverview::Range scale = ScaleOf(s);
        common.Take(scale);
        const auto y = [&](float value) {
            if (picture_.log && value <= 0)
                return noValue;
            return picture_.ownScales && scale.Any() ? OnOwnScale(value, scale, picture_.log)
                                                     : static_cast<double>(value);
        };
        QVector<QCPGraphData> points;
        const auto curve = CurveOf(*picture_.run, s, picture_.span, picture_.axis, width);
        for (const auto& [x, range] : curve) {
            points.append(QCPGraphData(x, range.Any() ? y(range.low) : noValue));
            if (range.low < range.high)
                points.append(QCPGraphData(x, y(range.high)));
        }
        if (!scale.Any())
            continue;
        QCPGraph* graph = plot_->addGraph();
        graph->setAdaptiveSampling(false); // the curve is reduced already
        graph->data()->set(points, picture_.axis == RunAxis::record);
        QString name = picture_.series[s].name;
        if (picture_.ownScales)
            name += QString(" (%1 ... %2)").arg(scale.low).arg(scale.high);
        graph->setName(name);
        const QColor colour = SeriesStyle::Colour(picture_.series[s].style, palette());
        const bool few = curve.size() <= fewPoints;
        graph->setPen(QPen(colour, few ? 2 : 1));
        if (few)
            graph->setScatterStyle({QCPScatterStyle::ssDisc, colour, colour, markSize_px});
    }
    FitAxes(common);
}

void SpanPlot::FitAxes(const RunOverview::Range& scale) {
    const auto [begin, end] = ExtentOf(*picture_.run, picture_.span, picture_.axis);
    const double beside = std::max((end - begin) * 0.01, 0.5);
    plot_->xAxis->setRange(begin - beside, end + beside);
    if (picture_.axis == RunAxis::time) {
        const QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
        ticker->setDateTimeSpec(Qt::UTC); // the seconds are those of the wall clock as they stand
        ticker->setDateTimeFormat("hh:mm:ss\ndd.MMM.yyyy");
        ticker->setTickCount(6);
        plot_->xAxis->setTicker(ticker);
        plot_->xAxis->setLabel(tr("Time"));
    } else {
        const QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
        plot_->xAxis->setTicker(ticker);
        plot_->xAxis->setNumberFormat("f");
        plot_->xAxis->setNumberPrecision(0);
        plot_->xAxis->setLabel(tr("Record"));
    }
    const bool log = picture_.log && !picture_.ownScales;
    plot_->yAxis->setScaleType(log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    if (log)
        plot_->yAxis->setTicker(QSharedPointer<QCPAxisTickerLog>(new QCPAxisTickerLog));
    else
        plot_->yAxis->setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    plot_->yAxis->setTickLabels(!picture_.ownScales);
    plot_->yAxis->setLabel(picture_.ownScales ? tr("%1, each on its own scale").arg(picture_.unit)
                                              : picture_.unit);
    if (picture_.ownScales || !scale.Any()) {
        plot_->yAxis->setRange(-spaceAboveValues, 1 + spaceAboveValues);
        return;
    }
    const double low = scale.low;
    const double high = scale.high;
    if (log)
        return plot_->yAxis->setRange(low / 1.2, high * 1.2);
    const double space =
        high > low ? (high - low) * spaceAboveValues : std::max(std::abs(low) / 10, 1e-9);
    plot_->yAxis->setRange(low - space, high + space);
}

void SpanPlot::ApplyLook() {
    const QColor text = palette().color(QPalette::Text);
    QColor grid = text;
    grid.setAlpha(50);
    plot_->setBackground(palette().color(QPalette::Base));
    title_->setTextColor(text);
    QFont titleFont = font();
    titleFont.setBold(true);
    title_->setFont(titleFont);
    for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setBasePen(text);
        axis->setTickPen(text);
        axis->setSubTickPen(text);
        axis->setLabelColor(text);
        axis->setTickLabelColor(text);
        axis->setLabelFont(font());
        axis->setTickLabelFont(font());
        axis->grid()->setPen(QPen(grid, 0, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(grid, 0, Qt::SolidLine));
    }
    plot_->legend->setBrush(Qt::NoBrush);
    plot_->legend->setBorderPen(Qt::NoPen);
    plot_->legend->setTextColor(text);
    plot_->legend->setFont(font());
    lines_[0]->setPen(QPen(text, 1.5, Qt::SolidLine));
    lines_[1]->setPen(QPen(text, 1.5, Qt::DashLine));
}

void SpanPlot::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    ApplyLook();
    Refresh();
}

std::optional<std::size_t> SpanPlot::Cursor(int cursor) const {
    return cursors_.at(static_cast<std::size_t>(cursor));
}

double SpanPlot::XOf(std::size_t group) const {
    const RunOverview::Group& at = picture_.run->At(group);
    if (picture_.axis == RunAxis::record)
        return at.number;
    return at.begin ? static_cast<double>(at.begin->time_since_epoch().count()) : noValue;
}

std::optional<std::size_t> SpanPlot::GroupAt(double x) const {
    std::optional<std::size_t> nearest;
    double least = std::numeric_limits<double>::max();
    for (std::size_t group = 0; group < picture_.run->GroupCount(); ++group) {
        const double distance = std::abs(XOf(group) - x);
        if (picture_.run->At(group).records == 0 || !(distance < least))
            continue;
        least = distance;
        nearest = group;
    }
    return nearest;
}

void SpanPlot::SetCursor(int cursor, std::optional<std::size_t> group) {
    heldCursor_ = cursor;
    cursors_.at(static_cast<std::size_t>(cursor)) = group;
    DrawCursors();
    plot_->replot(QCustomPlot::rpQueuedReplot);
    Q_EMIT CursorsMoved();
}

void SpanPlot::DrawCursors() {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto& group = cursors_.at(i);
        const bool shown = group && *group < picture_.run->GroupCount();
        lines_.at(i)->setVisible(shown);
        if (!shown)
            continue;
        const double x = XOf(*group);
        lines_.at(i)->start->setCoords(x, 0);
        lines_.at(i)->end->setCoords(x, 1);
    }
}

/// Takes the held cursor up where it is not shown yet.
void SpanPlot::MoveCursor(int groups) {
    const auto& at = cursors_.at(static_cast<std::size_t>(heldCursor_));
    const auto last = static_cast<std::int64_t>(picture_.run->GroupCount()) - 1;
    if (last < 0)
        return;
    const std::int64_t from = at ? static_cast<std::int64_t>(*at) : last / 2;
    const std::int64_t to = std::clamp(from + groups, std::int64_t{0}, last);
    SetCursor(heldCursor_, static_cast<std::size_t>(to));
}

void SpanPlot::keyPressEvent(QKeyEvent* event) {
    if (picture_.run == nullptr)
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_1:
    case Qt::Key_2:
        heldCursor_ = event->key() - Qt::Key_1;
        return MoveCursor(0);
    case Qt::Key_Left:
        return MoveCursor(-1);
    case Qt::Key_Right:
        return MoveCursor(1);
    case Qt::Key_Plus:
        return Q_EMIT ZoomWanted(1 / zoomStep, 0.5);
    case Qt::Key_Minus:
        return Q_EMIT ZoomWanted(zoomStep, 0.5);
    case Qt::Key_PageUp:
        return Q_EMIT MoveWanted(-1);
    case Qt::Key_PageDown:
        return Q_EMIT MoveWanted(1);
    default:
        QWidget::keyPressEvent(event);
    }
}

bool SpanPlot::Clicked(const QPointF& position, bool second) {
    if (picture_.run == nullptr ||
        (position - pressed_).manhattanLength() >= QApplication::startDragDistance())
        return false;
    SetCursor(second ? 1 : 0, GroupAt(plot_->xAxis->pixelToCoord(position.x())));
    return true;
}

bool SpanPlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched != plot_)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        const QPoint angle = wheel->angleDelta();
        const int turned = angle.y() != 0 ? angle.y() : angle.x(); // Shift turns it aside
        const QRect axes = plot_->axisRect()->rect();
        const double share = (wheel->position().x() - axes.left()) / std::max(axes.width(), 1);
        if (turned != 0)
            Q_EMIT ZoomWanted(turned > 0 ? 1 / zoomStep : zoomStep, std::clamp(share, 0.0, 1.0));
        return true;
    }
    const auto* mouse = dynamic_cast<QMouseEvent*>(event);
    if (mouse != nullptr && mouse->button() == Qt::LeftButton) {
        if (event->type() == QEvent::MouseButtonPress) {
            setFocus(Qt::MouseFocusReason);
            pressed_ = mouse->position();
        } else if (event->type() == QEvent::MouseButtonRelease &&
                   !Clicked(mouse->position(), mouse->modifiers().testFlag(Qt::ShiftModifier))) {
            const double moved = pressed_.x() - mouse->position().x();
            Q_EMIT MoveWanted(moved / std::max(plot_->axisRect()->width(), 1));
        }
    }
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &SpanPlot::Refresh, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}
