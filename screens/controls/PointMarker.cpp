#include "screens/controls/PointMarker.h"

#include "screens/controls/GraphPoints.h"
#include "screens/controls/SeriesStyle.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr double reach_px = 12;
constexpr double ring_px = 2 * SeriesStyle::markSize_px;
} // namespace

PointMarker::PointMarker(QCustomPlot& plot, const GraphPoints& points)
    : plot_(plot), points_(points), ring_(new QCPItemTracer(&plot)) {
    ring_->setStyle(QCPItemTracer::tsCircle);
    ring_->setSize(ring_px);
    ring_->setVisible(false);
}

PointMarker::Point PointMarker::At(const QPointF& position) const {
    Point found;
    double nearest = reach_px * reach_px;
    const double x = plot_.xAxis->pixelToCoord(position.x());
    const double reach = plot_.xAxis->pixelToCoord(position.x() + reach_px) - x; // in points
    const int first = std::max(1, static_cast<int>(std::floor(x - reach)));
    const int last = std::min(points_.Points(), static_cast<int>(std::ceil(x + reach)));
    for (int set = 1; set <= points_.Sets(); ++set)
        for (int point = first; point <= last; ++point) {
            const double value = points_.At(set, point);
            const double dx = plot_.xAxis->coordToPixel(point) - position.x();
            const double dy = plot_.yAxis->coordToPixel(value) - position.y();
            if (std::isnan(value) || dx * dx + dy * dy > nearest)
                continue;
            nearest = dx * dx + dy * dy;
            found = {set, point};
        }
    return found;
}

void PointMarker::Mark(const Point& point) {
    if (point == marked_)
        return;
    marked_ = point;
    ring_->setVisible(point.set != 0);
    if (point.set != 0)
        ring_->position->setCoords(point.point, points_.At(point.set, point.point));
    plot_.replot(QCustomPlot::rpQueuedReplot);
    Q_EMIT Moved(point.set, point.point);
}

void PointMarker::StepPoint(int points) {
    const bool none = marked_.set == 0;
    const int set = none ? std::max(points_.FirstSetWithValues(), 1) : marked_.set;
    int point = marked_.point;
    if (none)
        point = points > 0 ? 0 : points_.Points() + 1;
    do
        point += points;
    while (point >= 1 && point <= points_.Points() && std::isnan(points_.At(set, point)));
    if (point >= 1 && point <= points_.Points())
        Mark({set, point});
}

void PointMarker::StepSet(int sets) {
    const int point = std::max(marked_.point, 1);
    int set = marked_.set;
    do
        set += sets;
    while (set >= 1 && set <= points_.Sets() && std::isnan(points_.At(set, point)));
    if (set >= 1 && set <= points_.Sets())
        Mark({set, point});
}

void PointMarker::Dress(const QColor& colour) {
    ring_->setPen(QPen(colour, 2));
    ring_->setBrush(Qt::NoBrush);
}

void PointMarker::Show(bool shown) {
    ring_->setVisible(shown && marked_.set != 0);
}
