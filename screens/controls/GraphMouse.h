#pragma once

#include <QObject>
#include <QPointF>

class PointMarker;
class QCustomPlot;
class QMouseEvent;
class QWheelEvent;

/// The mouse over a graph of points. The plot itself zooms (wheel) and pans (drag), along the axis
/// below the mouse or along both; what more the mouse says is found here: the point under it is
/// marked, and clicks and wishes are told.
class GraphMouse : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the object.
    GraphMouse(QCustomPlot& plot, PointMarker& marker);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void Pressed();
    void PointClicked(int set, int point);
    /// A double click.
    void WholeSpanWanted();
    /// The wheel with Shift: a span so many times as long is wanted; the record at this share of it
    /// stays in place.
    void SpanZoomWanted(double factor, double share);

private:
    void ZoomAxesAt(const QPointF& position);
    bool Turned(const QWheelEvent& wheel);
    void Released(const QMouseEvent& mouse);

    QCustomPlot& plot_;
    PointMarker& marker_;
    QPointF pressed_;
};
