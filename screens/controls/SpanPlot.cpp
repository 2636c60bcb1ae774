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

using Mreport::RecordSpan;
using Mreport::RunAxis;
using Mreport::RunOverview;

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double spaceAboveValues = 0.06; // of the scale
constexpr double spaceOfLog = 1.2;        // times the largest value
constexpr double spaceBesideSpan = 0.01;  // of the span
constexpr double zoomStep = 1.25;
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
    picture_ = std::move(picture);
    for (auto& cursor : cursors_)
        if (cursor && (*cursor < picture_.span.first || *cursor >= picture_.span.end))
            cursor.reset();
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

/// Logarithms have no place for what is not above 0.
RunOverview::Range SpanPlot::ScaleOf(std::size_t series) const {
    if (!picture_.log)
        return picture_.run->RangeOf(series, picture_.span);
    RunOverview::Range range;
    for (const auto& [column, values] : picture_.run->Columns(
             series, picture_.span, static_cast<std::size_t>(picture_.span.Count()))) {
        if (values.Any() && values.low > 0)
            range.Take(values.low);
        if (values.Any() && values.high > 0)
            range.Take(values.high);
    }
    return range;
}

void SpanPlot::DrawCurves() {
    plot_->clearGraphs();
    RunOverview::Range common;
    for (const Series& series : picture_.series) {
        const RunOverview::Range scale = ScaleOf(series.index);
        if (!scale.Any())
            continue;
        common.Take(scale);
        DrawCurve(series, scale);
    }
    FitRecordsOrTime();
    FitAxes(common);
}

void SpanPlot::DrawCurve(const Series& series, const RunOverview::Range& scale) {
    const auto y = [&](float value) {
        if (picture_.log && value <= 0)
            return noValue;
        return picture_.ownScales ? OnOwnScale(value, scale, picture_.log)
                                  : static_cast<double>(value);
    };
    const auto width = static_cast<std::size_t>(std::max(plot_->axisRect()->width(), 100));
    const auto curve = CurveOf(*picture_.run, series.index, picture_.span, picture_.axis, width);
    QVector<QCPGraphData> points;
    for (const auto& [x, range] : curve) {
        points.append(QCPGraphData(x, range.Any() ? y(range.low) : noValue));
        if (range.low < range.high)
            points.append(QCPGraphData(x, y(range.high)));
    }
    QCPGraph* graph = plot_->addGraph();
    graph->setAdaptiveSampling(false); // the curve is reduced already
    graph->data()->set(points);
    QString name = series.name;
    if (picture_.ownScales)
        name += QString(" (%1 ... %2)").arg(scale.low).arg(scale.high);
    graph->setName(name);
    const QColor colour = SeriesStyle::Colour(series.style, palette());
    const bool few = curve.size() <= fewPoints;
    graph->setPen(QPen(colour, few ? 2 : 1));
    if (few)
        graph->setScatterStyle({QCPScatterStyle::ssDisc, colour, colour, markSize_px});
}

void SpanPlot::FitRecordsOrTime() {
    const auto [begin, end] = ExtentOf(*picture_.run, picture_.span, picture_.axis);
    const double beside = std::max((end - begin) * spaceBesideSpan, 0.5);
    plot_->xAxis->setRange(begin - beside, end + beside);
    if (picture_.axis == RunAxis::record) {
        plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
        plot_->xAxis->setNumberFormat("f");
        plot_->xAxis->setNumberPrecision(0);
        plot_->xAxis->setLabel(tr("Record"));
        return;
    }
    const QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
    ticker->setDateTimeSpec(Qt::UTC); // the seconds are those of the wall clock as they stand
    ticker->setDateTimeFormat("hh:mm:ss\ndd.MMM.yyyy");
    plot_->xAxis->setTicker(ticker);
    plot_->xAxis->setLabel(tr("Time"));
}

void SpanPlot::FitAxes(const RunOverview::Range& scale) {
    QCPAxis& axis = *plot_->yAxis;
    const bool log = picture_.log && !picture_.ownScales;
    axis.setScaleType(log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    if (log)
        axis.setTicker(QSharedPointer<QCPAxisTickerLog>(new QCPAxisTickerLog));
    else
        axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    axis.setTickLabels(!picture_.ownScales);
    axis.setLabel(picture_.ownScales ? tr("%1, each on its own scale").arg(picture_.unit)
                                     : picture_.unit);
    if (picture_.ownScales || !scale.Any())
        return axis.setRange(-spaceAboveValues, 1 + spaceAboveValues);
    const double low = scale.low;
    const double high = scale.high;
    if (log)
        return axis.setRange(low / spaceOfLog, high * spaceOfLog);
    const double space =
        high > low ? (high - low) * spaceAboveValues : std::max(std::abs(low) / 10, 1e-9);
    axis.setRange(low - space, high + space);
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
    const auto& place = cursors_.at(static_cast<std::size_t>(cursor));
    if (!place || picture_.run == nullptr)
        return std::nullopt;
    const auto group = static_cast<std::size_t>((*place - picture_.run->Span().first) /
                                                picture_.run->RecordsPerGroup());
    return group < picture_.run->GroupCount() ? std::optional(group) : std::nullopt;
}

std::int64_t SpanPlot::PlaceOf(std::size_t group) const {
    return picture_.run->Span().first +
           static_cast<std::int64_t>(group) * picture_.run->RecordsPerGroup();
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

void SpanPlot::SetCursor(int cursor, std::size_t group) {
    heldCursor_ = cursor;
    cursors_.at(static_cast<std::size_t>(cursor)) = PlaceOf(group);
    DrawCursors();
    plot_->replot(QCustomPlot::rpQueuedReplot);
    Q_EMIT CursorsMoved();
}

void SpanPlot::DrawCursors() {
    for (int i = 0; i < static_cast<int>(lines_.size()); ++i) {
        QCPItemLine* line = lines_.at(static_cast<std::size_t>(i));
        const auto group = Cursor(i);
        line->setVisible(group.has_value());
        if (!group)
            continue;
        line->start->setCoords(XOf(*group), 0);
        line->end->setCoords(XOf(*group), 1);
    }
}

/// A cursor that is not shown yet is taken up in the middle of the span.
void SpanPlot::MoveCursor(int groups) {
    const std::int64_t step = groups * picture_.run->RecordsPerGroup();
    const auto& at = cursors_.at(static_cast<std::size_t>(heldCursor_));
    const RecordSpan& span = picture_.span;
    if (span.Count() <= 0)
        return;
    const std::int64_t place =
        std::clamp(at ? *at + step : (span.first + span.end) / 2, span.first, span.end - 1);
    SetCursor(heldCursor_, static_cast<std::size_t>((place - picture_.run->Span().first) /
                                                    picture_.run->RecordsPerGroup()));
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
    if (const auto group = GroupAt(plot_->xAxis->pixelToCoord(position.x())))
        SetCursor(second ? 1 : 0, *group);
    return true;
}

bool SpanPlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched != plot_)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Wheel) {
        Turned(*static_cast<QWheelEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &SpanPlot::Refresh, Qt::QueuedConnection);
    const auto* mouse = dynamic_cast<QMouseEvent*>(event);
    if (mouse == nullptr || mouse->button() != Qt::LeftButton)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonPress) {
        setFocus(Qt::MouseFocusReason);
        pressed_ = mouse->position();
    } else if (event->type() == QEvent::MouseButtonRelease &&
               !Clicked(mouse->position(), mouse->modifiers().testFlag(Qt::ShiftModifier))) {
        const double dragged = pressed_.x() - mouse->position().x();
        Q_EMIT MoveWanted(dragged / std::max(plot_->axisRect()->width(), 1));
    }
    return QWidget::eventFilter(watched, event);
}

void SpanPlot::Turned(const QWheelEvent& wheel) {
    const QPoint angle = wheel.angleDelta();
    const int turned = angle.y() != 0 ? angle.y() : angle.x(); // Shift turns it aside
    const QRect axes = plot_->axisRect()->rect();
    const double share = (wheel.position().x() - axes.left()) / std::max(axes.width(), 1);
    if (turned != 0)
        Q_EMIT ZoomWanted(turned > 0 ? 1 / zoomStep : zoomStep, std::clamp(share, 0.0, 1.0));
}
