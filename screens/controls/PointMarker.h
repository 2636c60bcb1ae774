#pragma once

#include <QObject>
#include <QPointF>

class GraphPoints;
class QCPItemTracer;
class QCustomPlot;

/// The marked point of a graph: the one under the mouse, or the one to which the arrow keys have
/// walked.
class PointMarker : public QObject {
    Q_OBJECT

public:
    struct Point {
        int set = 0; ///< 0: none
        int point = 0;

        bool operator==(const Point&) const = default;
    };

    /// Both must outlive the marker; the plot is no parent of it.
    PointMarker(QCustomPlot& plot, const GraphPoints& points);

    const Point& Marked() const { return marked_; }

    /// The point nearest to a place of the plot, where one is near.
    Point At(const QPointF& position) const;

    /// Rings the point, or takes the ring away.
    void Mark(const Point& point);

    /// Walks on to the next point of the set that carries a value.
    void StepPoint(int points);
    /// Walks to the next set that has a value at the point.
    void StepSet(int sets);

    /// The ring's colour.
    void Dress(const QColor& colour);
    /// Hides the ring, or shows it again where a point is marked.
    void Show(bool shown);

Q_SIGNALS:
    void Moved(int set, int point);

private:
    QCustomPlot& plot_;
    const GraphPoints& points_;
    QCPItemTracer* ring_;
    Point marked_;
};
