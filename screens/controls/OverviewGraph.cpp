#include "screens/controls/OverviewGraph.h"

#include "report/SpanMoves.h"
#include "screens/controls/WheelZoom.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {

using Mreport::RecordSpan;
namespace SpanMoves = Mreport::SpanMoves;

constexpr int height_px = 68;
constexpr int lowest_px = 20;
constexpr int shadeOpacity = 90; // beside the frame, where the curves are to be seen, too
constexpr double reach_px = 5;   // of a frame's edge for the mouse
constexpr double narrowestFrame_px = 6;
constexpr double keyStep = 0.1; // of the span

} // namespace

OverviewGraph::OverviewGraph(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    setAccessibleName("Overview of the whole file");
}

QSize OverviewGraph::sizeHint() const {
    return {200, height_px};
}

QSize OverviewGraph::minimumSizeHint() const {
    return {100, lowest_px};
}

void OverviewGraph::SetRun(const Mreport::RunOverview* run, std::vector<int> styles) {
    strip_.SetRun(run, std::move(styles));
    RunChanged();
}

void OverviewGraph::RunChanged() {
    picture_ = {};
    TellSpan();
    update();
}

void OverviewGraph::SetScales(bool own, bool log) {
    strip_.SetOwnScales(own);
    strip_.SetLog(log);
    RunChanged();
}

void OverviewGraph::SetSpan(const RecordSpan& span) {
    if (span == span_)
        return;
    span_ = span;
    TellSpan();
    update();
}

/// To who cannot see the frame.
void OverviewGraph::TellSpan() {
    setAccessibleDescription(strip_.HasRun() ? QString("Records %1 to %2 of %3")
                                                   .arg(span_.first + 1)
                                                   .arg(span_.end)
                                                   .arg(strip_.Records())
                                             : QString());
}

QRectF OverviewGraph::Frame() const {
    double left = strip_.XOf(span_.first);
    double right = strip_.XOf(span_.end);
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
        if (strip_.HasRun())
            strip_.Draw(painter, palette());
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture_);
    if (strip_.HasRun())
        DrawFrame(painter);
    painter.setPen(hasFocus() ? palette().color(QPalette::Highlight)
                              : palette().color(QPalette::Mid));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void OverviewGraph::DrawFrame(QPainter& painter) const {
    const QRectF frame = Frame();
    QColor shade = palette().color(QPalette::Window);
    shade.setAlpha(shadeOpacity);
    painter.fillRect(QRectF(0, 0, frame.left(), height()), shade);
    painter.fillRect(QRectF(frame.right(), 0, width() - frame.right(), height()), shade);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(frame.adjusted(1, 1, -1, -1));
}

void OverviewGraph::resizeEvent(QResizeEvent*) {
    strip_.SetSize(size());
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

void OverviewGraph::mousePressEvent(QMouseEvent* event) {
    if (!strip_.HasRun() || event->button() != Qt::LeftButton)
        return;
    if (const auto* flag = strip_.FlagAt(event->position())) {
        Q_EMIT FlagClicked(flag->comment, flag->commentOffset);
        return;
    }
    const std::int64_t place = strip_.PlaceAt(event->position().x());
    grip_ = GripAt(event->position());
    if (grip_ == Grip::none) { // beside the frame: it comes to the mouse
        Choose(SpanMoves::Around(span_, place));
        grip_ = Grip::frame;
    }
    grabbed_ = place;
    grabbedSpan_ = span_;
}

void OverviewGraph::mouseMoveEvent(QMouseEvent* event) {
    if (!strip_.HasRun())
        return;
    if (grip_ == Grip::none)
        ShowPointer(event->position());
    else
        Drag(event->position());
}

void OverviewGraph::ShowPointer(const QPointF& position) {
    const Grip grip = GripAt(position);
    if (strip_.FlagAt(position) != nullptr)
        setCursor(Qt::PointingHandCursor);
    else if (grip == Grip::begin || grip == Grip::end)
        setCursor(Qt::SizeHorCursor);
    else
        setCursor(grip == Grip::frame ? Qt::SizeAllCursor : Qt::ArrowCursor);
}

void OverviewGraph::Drag(const QPointF& position) {
    const std::int64_t moved = strip_.PlaceAt(position.x()) - grabbed_;
    if (grip_ == Grip::begin)
        Choose(SpanMoves::WithBegin(grabbedSpan_, grabbedSpan_.first + moved));
    else if (grip_ == Grip::end)
        Choose(
            SpanMoves::WithEnd(grabbedSpan_, std::min(grabbedSpan_.end + moved, strip_.Records())));
    else
        Choose(SpanMoves::Moved(grabbedSpan_, moved));
}

void OverviewGraph::mouseReleaseEvent(QMouseEvent*) {
    grip_ = Grip::none;
}

/// Keeps the span within the run, at its length where the run is long enough.
void OverviewGraph::Choose(const RecordSpan& span) {
    const RecordSpan within = SpanMoves::Within(span, strip_.Records());
    if (within == span_)
        return;
    SetSpan(within);
    Q_EMIT SpanChosen(within);
}

/// Above 1: longer; the record at `x` stays where it is.
void OverviewGraph::Zoom(double factor, double x) {
    const auto ahead = static_cast<double>(strip_.PlaceAt(x) - span_.first);
    const double share = std::clamp(ahead / static_cast<double>(span_.Count()), 0.0, 1.0);
    Choose(SpanMoves::Zoomed(span_, factor, share));
}

void OverviewGraph::wheelEvent(QWheelEvent* event) {
    const double factor = ZoomOf(*event, rect()).factor;
    if (!strip_.HasRun() || factor == 1)
        return event->ignore();
    Zoom(factor, event->position().x());
    event->accept();
}

void OverviewGraph::keyPressEvent(QKeyEvent* event) {
    if (!strip_.HasRun())
        return QWidget::keyPressEvent(event);
    const std::int64_t length = span_.Count();
    const auto step =
        std::max<std::int64_t>(1, static_cast<std::int64_t>(static_cast<double>(length) * keyStep));
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    const auto move = [this](std::int64_t records) { Choose(SpanMoves::Moved(span_, records)); };
    const auto resize = [this](std::int64_t end) {
        Choose(SpanMoves::WithEnd(span_, std::min(end, strip_.Records())));
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return shift ? resize(span_.end - step) : move(-step);
    case Qt::Key_Right:
        return shift ? resize(span_.end + step) : move(step);
    case Qt::Key_PageUp:
        return move(-length);
    case Qt::Key_PageDown:
        return move(length);
    case Qt::Key_Home:
        return move(-span_.first);
    case Qt::Key_End:
        return move(strip_.Records() - span_.end);
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
    const auto* flag = strip_.FlagAt(help->pos());
    if (flag == nullptr)
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), CommentText(*flag).toHtmlEscaped(), this);
    return true;
}
