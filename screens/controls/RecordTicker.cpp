#include "screens/controls/RecordTicker.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr std::size_t mostSmallTicks = 200;
}

std::vector<int> RecordTicker::LabelledPoints(const QCPRange& range) const {
    const int first = std::max(1, static_cast<int>(std::ceil(range.lower)));
    const int last =
        std::min(static_cast<int>(labels.size()), static_cast<int>(std::floor(range.upper)));
    std::vector<int> points;
    for (int point = first; point <= last; ++point)
        if (!labels[static_cast<std::size_t>(point - 1)].isEmpty())
            points.push_back(point);
    return points;
}

void RecordTicker::generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*formatChar*/,
                            int /*precision*/, QVector<double>& ticks, QVector<double>* subTicks,
                            QVector<QString>* tickLabels) {
    ticks.clear();
    if (subTicks != nullptr)
        subTicks->clear();
    if (tickLabels != nullptr)
        tickLabels->clear();
    const auto points = LabelledPoints(range);
    const std::size_t room = static_cast<std::size_t>(std::max(room_, 1));
    const std::size_t step = std::max<std::size_t>(1, (points.size() + room - 1) / room);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i % step == 0) {
            ticks.append(points[i]);
            if (tickLabels != nullptr)
                tickLabels->append(labels[static_cast<std::size_t>(points[i] - 1)]);
        } else if (subTicks != nullptr && points.size() <= mostSmallTicks) {
            subTicks->append(points[i]);
        }
    }
}
