#include "screens/controls/OverviewGraph.h"

#include "screens/controls/SeriesStyle.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {

using Mreport::RecordSpan;
using Mreport::RunOverview;

constexpr int height_px = 68;
constexpr int lowest_px = 20;
constexpr double flagHeight_px = 9;
constexpr double flagWidth_px = 6;
constexpr double margin_px = 4; // above and below the curves
constexpr double reach_px = 5;  // of a frame's edge for the mouse
constexpr double narrowestFrame_px = 6;
constexpr double zoomStep = 1.25;
constexpr double keyStep = 0.1; // of the span
constexpr std::int64_t shortestSpan = 2;

} // namespace

OverviewGraph::OverviewGraph(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    setAccessibleName(tr("Overview of the whole file"));
}

QSize OverviewGraph::sizeHint() const {
    return {200, height_px};
}

QSize OverviewGraph::minimumSizeHint() const {
    return {100, lowest_px};
}

void OverviewGraph::SetRun(const RunOverview* run, std::vector<int> styles) {
    run_ = run;
    styles_ = std::move(styles);
    RunChanged();
}

void OverviewGraph::RunChanged() {
    picture_ = {};
    update();
}

void OverviewGraph::SetOwnScales(bool own) {
    ownScales_ = own;
    RunChanged();
}

void OverviewGraph::SetSpan(const RecordSpan& span) {
    if (span == span_)
        return;
    span_ = span;
    const QString text = HasRun() ? tr("Records %1 to %2 of %3")
                                        .arg(span.first + 1)
                                        .arg(span.end)
                                        .arg(run_->Span().Count())
                                  : QString();
    setAccessibleDescription(text);
    update();
}

double OverviewGraph::XOf(std::int64_t place) const {
    return static_cast<double>(place) * width() / static_cast<double>(run_->Span().Count());
}

std::int64_t OverviewGraph::PlaceAt(double x) const {
    const double share = x / std::max(width(), 1);
    return std::llround(share * static_cast<double>(run_->Span().Count()));
}

QRectF OverviewGraph::Frame() const {
    double left = XOf(span_.first);
    double right = XOf(span_.end);
    if (right - left < narrowestFrame_px) { // a short span of a long run can still be seen and held
        const double middle =
            std::clamp((left + right) / 2, narrowestFrame_px / 2, width() - narrowestFrame_px / 2);
        left = middle - narrowestFrame_px / 2;
        right = middle + narrowestFrame_px / 2;
    }
    return {left, 0.5, right - left, height() - 1.0};
}

void OverviewGraph::paintEvent(QPaintEvent*) {
    if (picture_.isNull()) {
        picture_ = QPixmap(size() * devicePixelRatioF());
        picture_.setDevicePixelRatio(devicePixelRatioF());
        picture_.fill(palette().color(QPalette::Base));
        QPainter painter(&picture_);
        painter.setRenderHint(QPainter::Antialiasing);
        if (HasRun()) {
            DrawSeries(painter);
            DrawFlags(painter);
        }
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture_);
    if (HasRun())
        DrawFrame(painter);
    painter.setPen(hasFocus() ? palette().color(QPalette::Highlight)
                              : palette().color(QPalette::Mid));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void OverviewGraph::DrawSeries(QPainter& painter) const {
    RunOverview::Range common;
    for (std::size_t s = 0; s < run_->SeriesCount(); ++s)
        common.Take(run_->RangeOf(s, run_->Span()));
    for (std::size_t s = 0; s < run_->SeriesCount(); ++s)
        DrawOne(painter, s, ownScales_ ? run_->RangeOf(s, run_->Span()) : common);
}

void OverviewGraph::DrawOne(QPainter& painter, std::size_t series,
                            const RunOverview::Range& scale) const {
    if (!scale.Any())
        return;
    const auto columns = static_cast<std::size_t>(std::max(width(), 1));
    const double low = scale.low;
    const double range = std::max(static_cast<double>(scale.high) - low, 1e-30);
    const double top = flagHeight_px + margin_px;
    const double room = height() - top - margin_px;
    const auto y = [&](float value) { return top + room * (1 - (value - low) / range); };
    QPainterPath path;
    bool drawing = false;
    for (const auto& [column, values] : run_->Columns(series, run_->Span(), columns)) {
        if (!values.Any()) {
            drawing = false;
            continue;
        }
        const double x = static_cast<double>(column) + 0.5;
        if (drawing)
            path.lineTo(x, y(values.low));
        else
            path.moveTo(x, y(values.low));
        path.lineTo(x, y(values.high) - (drawing ? 0 : 0.5)); // a value alone is a dot
        drawing = true;
    }
    painter.setPen(QPen(SeriesStyle::Colour(styles_.at(series), palette()), 1.2));
    painter.drawPath(path);
}

void OverviewGraph::DrawFlags(QPainter& painter) const {
    const QColor colour = palette().color(QPalette::Text);
    painter.setPen(colour);
    painter.setBrush(colour);
    for (std::size_t i = 0; i < run_->GroupCount(); ++i) {
        const RunOverview::Group& group = run_->At(i);
        if (group.comment < 0)
            continue;
        const double x = XOf(group.comment) + 0.5;
        painter.drawLine(QPointF(x, 1), QPointF(x, flagHeight_px + margin_px));
        painter.drawPolygon(
            QPolygonF{{x, 1}, {x + flagWidth_px, flagHeight_px / 2}, {x, flagHeight_px}});
    }
}

void OverviewGraph::DrawFrame(QPainter& painter) const {
    const QRectF frame = Frame();
    QColor shade = palette().color(QPalette::Window);
    shade.setAlpha(150);
    painter.fillRect(QRectF(0, 0, frame.left(), height()), shade);
    painter.fillRect(QRectF(frame.right(), 0, width() - frame.right(), height()), shade);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(frame.adjusted(1, 1, -1, -1));
}

void OverviewGraph::resizeEvent(QResizeEvent*) {
    RunChanged();
}

void OverviewGraph::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        RunChanged();
}

void OverviewGraph::focusInEvent(QFocusEvent*) {
    update();
}

void OverviewGraph::focusOutEvent(QFocusEvent*) {
    update();
}

OverviewGraph::Grip OverviewGraph::GripAt(const QPointF& position) const {
    const QRectF frame = Frame();
    const double x = position.x();
    if (x < frame.left() - reach_px || x > frame.right() + reach_px)
        return Grip::none;
    // The edges of a narrow frame are held from outside, so that its middle can still be dragged.
    const double inner = std::min(reach_px, frame.width() / 4);
    if (x < frame.left() + inner)
        return Grip::begin;
    return x > frame.right() - inner ? Grip::end : Grip::frame;
}

const RunOverview::Group* OverviewGraph::FlagAt(const QPointF& position) const {
    if (!HasRun() || position.y() > flagHeight_px + margin_px)
        return nullptr;
    const RunOverview::Group* nearest = nullptr;
    double least = flagWidth_px + 1;
    for (std::size_t i = 0; i < run_->GroupCount(); ++i) {
        const RunOverview::Group& group = run_->At(i);
        const double distance = std::abs(XOf(group.comment) + flagWidth_px / 2 - position.x());
        if (group.comment < 0 || distance >= least)
            continue;
        least = distance;
        nearest = &group;
    }
    return nearest;
}

void OverviewGraph::mousePressEvent(QMouseEvent* event) {
    if (!HasRun() || event->button() != Qt::LeftButton)
        return;
    if (const auto* flag = FlagAt(event->position())) {
        Q_EMIT FlagClicked(flag->comment, flag->commentOffset);
        return;
    }
    const std::int64_t place = PlaceAt(event->position().x());
    grip_ = GripAt(event->position());
    if (grip_ == Grip::none) { // beside the frame: it comes to the mouse
        const std::int64_t first = place - span_.Count() / 2;
        Choose({first, first + span_.Count()});
        grip_ = Grip::frame;
    }
    grabbed_ = place;
    grabbedSpan_ = span_;
}

void OverviewGraph::mouseMoveEvent(QMouseEvent* event) {
    if (!HasRun())
        return;
    if (grip_ == Grip::none)
        ShowPointer(event->position());
    else
        Drag(event->position());
}

void OverviewGraph::ShowPointer(const QPointF& position) {
    const Grip grip = GripAt(position);
    if (FlagAt(position) != nullptr)
        setCursor(Qt::PointingHandCursor);
    else if (grip == Grip::begin || grip == Grip::end)
        setCursor(Qt::SizeHorCursor);
    else
        setCursor(grip == Grip::frame ? Qt::SizeAllCursor : Qt::ArrowCursor);
}

void OverviewGraph::Drag(const QPointF& position) {
    const std::int64_t moved = PlaceAt(position.x()) - grabbed_;
    RecordSpan span = grabbedSpan_;
    if (grip_ != Grip::end)
        span.first += moved;
    if (grip_ != Grip::begin)
        span.end += moved;
    if (grip_ == Grip::begin)
        span.first = std::min(span.first, span.end - shortestSpan);
    if (grip_ == Grip::end)
        span.end = std::max(span.end, span.first + shortestSpan);
    Choose(span);
}

void OverviewGraph::mouseReleaseEvent(QMouseEvent*) {
    grip_ = Grip::none;
}

/// Keeps the span within the run, at its length where the run is long enough.
void OverviewGraph::Choose(RecordSpan span) {
    const std::int64_t records = run_->Span().Count();
    const std::int64_t length = std::clamp(span.Count(), std::min(shortestSpan, records), records);
    const std::int64_t first = std::clamp(span.first, std::int64_t{0}, records - length);
    const RecordSpan within{first, first + length};
    if (within == span_)
        return;
    SetSpan(within);
    Q_EMIT SpanChosen(within);
}

/// Above 1: longer; the record at `x` stays where it is.
void OverviewGraph::Zoom(double factor, double x) {
    const auto length = static_cast<double>(span_.Count());
    const double wanted = factor > 1 ? std::ceil(length * factor) : std::floor(length * factor);
    const double share =
        std::clamp((static_cast<double>(PlaceAt(x) - span_.first)) / length, 0.0, 1.0);
    const auto first = span_.first + std::llround(share * (length - wanted));
    Choose({first, first + std::llround(wanted)});
}

void OverviewGraph::wheelEvent(QWheelEvent* event) {
    const QPoint angle = event->angleDelta();
    const int turned = angle.y() != 0 ? angle.y() : angle.x(); // Shift or Alt turns it aside
    if (!HasRun() || turned == 0)
        return event->ignore();
    Zoom(turned > 0 ? 1 / zoomStep : zoomStep, event->position().x());
    event->accept();
}

void OverviewGraph::keyPressEvent(QKeyEvent* event) {
    if (!HasRun())
        return QWidget::keyPressEvent(event);
    const std::int64_t length = span_.Count();
    const auto step =
        std::max<std::int64_t>(1, static_cast<std::int64_t>(static_cast<double>(length) * keyStep));
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    const auto move = [this, length](std::int64_t first) { Choose({first, first + length}); };
    switch (event->key()) {
    case Qt::Key_Left:
        return shift ? Choose({span_.first, std::max(span_.end - step, span_.first + shortestSpan)})
                     : move(span_.first - step);
    case Qt::Key_Right:
        return shift ? Choose({span_.first, std::min(span_.end + step, run_->Span().end)})
                     : move(span_.first + step);
    case Qt::Key_PageUp:
        return move(span_.first - length);
    case Qt::Key_PageDown:
        return move(span_.first + length);
    case Qt::Key_Home:
        return move(0);
    case Qt::Key_End:
        return move(run_->Span().end - length);
    case Qt::Key_Plus:
        return Zoom(1 / zoomStep, Frame().center().x());
    case Qt::Key_Minus:
        return Zoom(zoomStep, Frame().center().x());
    default:
        QWidget::keyPressEvent(event);
    }
}

bool OverviewGraph::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !CommentText)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto* flag = FlagAt(help->pos());
    if (flag == nullptr)
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), CommentText(*flag).toHtmlEscaped(), this);
    return true;
}
