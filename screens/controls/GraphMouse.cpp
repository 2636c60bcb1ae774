#include "screens/controls/GraphMouse.h"

#include "screens/controls/PointMarker.h"
#include "screens/controls/WheelZoom.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QMouseEvent>

GraphMouse::GraphMouse(QCustomPlot& plot, PointMarker& marker) : plot_(plot), marker_(marker) {
    plot_.installEventFilter(this);
}

/// The wheel zooms the axis below it, and both within the axes.
void GraphMouse::ZoomAxesAt(const QPointF& position) {
    const QRectF inside = plot_.axisRect()->rect();
    Qt::Orientations axes = Qt::Horizontal | Qt::Vertical;
    if (position.y() > inside.bottom())
        axes = Qt::Horizontal;
    else if (position.x() < inside.left())
        axes = Qt::Vertical;
    plot_.axisRect()->setRangeZoom(axes);
}

/// True where the plot itself has nothing to do.
bool GraphMouse::Turned(const QWheelEvent& wheel) {
    if (!wheel.modifiers().testFlag(Qt::ShiftModifier)) {
        ZoomAxesAt(wheel.position());
        return false;
    }
    const auto [factor, share] = ZoomOf(wheel, plot_.axisRect()->rect());
    if (factor != 1)
        Q_EMIT SpanZoomWanted(factor, share);
    return true;
}

/// A drag is no click.
void GraphMouse::Released(const QMouseEvent& mouse) {
    if (mouse.button() != Qt::LeftButton ||
        (mouse.position() - pressed_).manhattanLength() >= QApplication::startDragDistance())
        return;
    const PointMarker::Point hit = marker_.At(mouse.position());
    if (hit.set != 0)
        Q_EMIT PointClicked(hit.set, hit.point);
}

bool GraphMouse::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &plot_)
        return QObject::eventFilter(watched, event);
    const auto* mouse = dynamic_cast<QMouseEvent*>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        pressed_ = mouse->position();
        Q_EMIT Pressed();
        break;
    case QEvent::MouseButtonRelease:
        Released(*mouse);
        break;
    case QEvent::MouseButtonDblClick:
        Q_EMIT WholeSpanWanted();
        break;
    case QEvent::Wheel:
        return Turned(*static_cast<QWheelEvent*>(event));
    case QEvent::MouseMove:
        if (mouse->buttons() == Qt::NoButton)
            marker_.Mark(marker_.At(mouse->position()));
        break;
    default:
        break;
    }
    return false;
}
