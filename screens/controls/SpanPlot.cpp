#include "screens/controls/SpanPlot.h"

#include "screens/controls/PaperSheet.h"
#include "screens/controls/PlotLook.h"
#include "screens/controls/SeriesStyle.h"
#include "screens/controls/SpanCursors.h"
#include "screens/controls/WheelZoom.h"
#include "screens/controls/WholeTicker.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimeZone>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>

namespace {

using Mreport::RunAxis;
using Mreport::RunScale;

constexpr double spaceOfLog = 1.2;       // times the largest value
constexpr double spaceBesideSpan = 0.01; // of the span
constexpr int narrowest_px = 100;        // not laid out yet: less
constexpr std::size_t fewPoints = 120;   // of a series, drawn by a thick line
constexpr double markDistance_px = 40;   // of a long curve, which is told apart by its marks, too
constexpr std::size_t shortCurve = 60;   // points, each with a mark

} // namespace

SpanPlot::SpanPlot(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Graph of a span of records");
    MakePlot();
    ApplyLook(palette(), font());
}

SpanPlot::~SpanPlot() = default;

void SpanPlot::MakePlot() {
    plot_ = new QCustomPlot(this);
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setLocale(QLocale::c());
    plot_->setNoAntialiasingOnDrag(true);
    plot_->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    title_ = PlotLook::AddHead(*plot_);
    emptyText_ = PlotLook::AddEmptyText(*plot_);
    cursors_ = std::make_unique<SpanCursors>(*plot_);
}

void SpanPlot::Show(Picture picture) {
    picture_ = std::move(picture);
    cursors_->SetRun(picture_.run, picture_.span, picture_.axis);
    title_->setText(picture_.title);
    Refresh();
}

void SpanPlot::Refresh() {
    if (picture_.run == nullptr)
        return;
    DrawCurves(plot_->axisRect()->width());
    PlotLook::FitHead(*plot_, plot_->height());
    cursors_->Draw();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void SpanPlot::DrawCurves(int width_px) {
    plot_->clearGraphs();
    RunScale common(picture_.log);
    for (const Series& series : picture_.series) {
        RunScale scale(picture_.log);
        scale.Take(*picture_.run, series.index, picture_.span);
        if (!scale.Any())
            continue;
        common.Take(scale);
        DrawCurve(series, scale, std::max(width_px, narrowest_px));
    }
    ShowWhyEmpty(common);
    FitRecordsOrTime();
    FitValues(common);
}

/// What has not been read yet may have values.
void SpanPlot::ShowWhyEmpty(const RunScale& scale) {
    const auto hasValues = [this](const Series& series) {
        return picture_.run->RangeOf(series.index, picture_.span).Any();
    };
    const bool values = std::ranges::any_of(picture_.series, hasValues);
    emptyText_->setText(values ? QString("No value is above zero, where this scale begins.")
                               : picture_.emptyText);
    emptyText_->setVisible(!scale.Any() && picture_.run->Complete());
}

void SpanPlot::DrawCurve(const Series& series, const RunScale& scale, int width_px) {
    const auto y = [&](double value) {
        const double share = scale.ShareOf(value); // not-a-number: it has no place
        return picture_.ownScales || std::isnan(share) ? share : value;
    };
    const auto curve = CurveOf(*picture_.run, series.index, picture_.span, picture_.axis, width_px);
    QVector<QCPGraphData> points;
    for (const auto& [x, range] : curve) {
        points.append(QCPGraphData(x, range.Any() ? y(range.low) : qQNaN()));
        if (range.low < range.high)
            points.append(QCPGraphData(x, y(range.high)));
    }
    QCPGraph* graph = plot_->addGraph();
    graph->setAdaptiveSampling(false); // the curve is reduced already
    graph->data()->set(points);
    QString name = series.name;
    if (picture_.ownScales)
        name += QString(" (%1 ... %2)").arg(scale.Low()).arg(scale.High());
    graph->setName(name);
    graph->setPen(
        QPen(SeriesStyle::Colour(series.style, look_), curve.size() <= fewPoints ? 2 : 1));
    graph->setScatterStyle(SeriesStyle::Mark(series.style, look_));
    const double marks = width_px / markDistance_px;
    const bool all = curve.size() <= shortCurve;
    graph->setScatterSkip(all ? 0 : static_cast<int>(static_cast<double>(points.size()) / marks));
}

void SpanPlot::FitRecordsOrTime() {
    const auto [begin, end] = ExtentOf(*picture_.run, picture_.span, picture_.axis);
    const double beside = std::max((end - begin) * spaceBesideSpan, 0.5);
    plot_->xAxis->setRange(begin - beside, end + beside);
    if (picture_.axis == RunAxis::record) {
        plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new WholeTicker<QCPAxisTicker>));
        plot_->xAxis->setNumberFormat("f");
        plot_->xAxis->setNumberPrecision(0);
        plot_->xAxis->setLabel("Record");
        return;
    }
    const QSharedPointer<QCPAxisTickerDateTime> ticker(new WholeTicker<QCPAxisTickerDateTime>);
    ticker->setDateTimeSpec(Qt::UTC); // the seconds are those of the wall clock as they stand
    ticker->setDateTimeFormat("hh:mm:ss\ndd.MMM.yyyy");
    plot_->xAxis->setTicker(ticker);
    plot_->xAxis->setLabel("Time");
}

void SpanPlot::FitValues(const RunScale& scale) {
    QCPAxis& axis = *plot_->yAxis;
    const bool own = picture_.ownScales;
    const bool log = scale.IsLog() && !own;
    axis.setScaleType(log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    if (log)
        axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTickerLog));
    else
        axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    // Powers of ten all in one style, other values as they are.
    axis.setNumberFormat(log ? "eb" : "gb");
    axis.setNumberPrecision(log ? 0 : 6);
    axis.setTickLabels(!own);
    axis.setLabel(own ? QString("%1, each on its own scale").arg(picture_.unit) : picture_.unit);
    if (own || !scale.Any())
        return axis.setRange(-PlotLook::spaceAboveValues, 1 + PlotLook::spaceAboveValues);
    if (log)
        return axis.setRange(scale.Low() / spaceOfLog, scale.High() * spaceOfLog);
    axis.setRange(PlotLook::WithSpace(scale.Low(), scale.High(), PlotLook::spaceAboveValues));
}

void SpanPlot::ApplyLook(const QPalette& palette, const QFont& font) {
    look_ = palette;
    PlotLook::Dress(*plot_, palette, font);
    PlotLook::DressTitle(*title_, palette, font);
    PlotLook::DressText(*emptyText_, palette, font);
    cursors_->Dress(palette);
}

/// The reduction is that of the paper: the curves are drawn once more, as wide as the sheet.
void SpanPlot::PaintOnPaper(QPainter& painter, const QRectF& place) {
    if (picture_.run == nullptr)
        return;
    const PaperSheet sheet(place);
    ApplyLook(PlotLook::Paper(), sheet.Font(font()));
    DrawCurves(sheet.Width_px());
    PlotLook::FitHead(*plot_, sheet.Height_px());
    sheet.Paint(*plot_, painter);
    ApplyLook(palette(), font());
    Refresh();
}

void SpanPlot::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    ApplyLook(palette(), font());
    Refresh();
}

std::optional<std::size_t> SpanPlot::Cursor(std::size_t cursor) const {
    return cursors_->Group(cursor);
}

void SpanPlot::TellCursors() {
    plot_->replot(QCustomPlot::rpQueuedReplot);
    Q_EMIT CursorsMoved();
}

void SpanPlot::MoveCursor(int groups) {
    if (cursors_->Move(groups))
        TellCursors();
}

void SpanPlot::keyPressEvent(QKeyEvent* event) {
    if (picture_.run == nullptr)
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_1:
    case Qt::Key_2:
        cursors_->Hold(event->key() == Qt::Key_1 ? 0 : 1);
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
    if (cursors_->Set(second ? 1 : 0, plot_->xAxis->pixelToCoord(position.x())))
        TellCursors();
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
    const auto [factor, share] = ZoomOf(wheel, plot_->axisRect()->rect());
    if (factor != 1)
        Q_EMIT ZoomWanted(factor, share);
}
