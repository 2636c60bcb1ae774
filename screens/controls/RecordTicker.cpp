#include "screens/controls/RecordTicker.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr std::size_t mostSmallTicks = 200;

std::size_t Index(int point) {
    return static_cast<std::size_t>(point) - 1;
}
} // namespace

void RecordTicker::SetLabel(int point, const QString& text) {
    if (point < 1)
        return;
    if (point > std::ssize(labels_))
        labels_.resize(Index(point) + 1);
    labels_[Index(point)] = text;
}

std::vector<int> RecordTicker::LabelledPoints(const QCPRange& range) const {
    const int first = std::max(1, static_cast<int>(std::ceil(range.lower)));
    const int last =
        std::min(static_cast<int>(labels_.size()), static_cast<int>(std::floor(range.upper)));
    std::vector<int> points;
    for (int point = first; point <= last; ++point)
        if (!labels_[Index(point)].isEmpty())
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
    const auto room = static_cast<std::size_t>(std::max(room_, 1));
    const std::size_t step = std::max<std::size_t>(1, (points.size() + room - 1) / room);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i % step == 0) {
            ticks.append(points[i]);
            if (tickLabels != nullptr)
                tickLabels->append(labels_[Index(points[i])]);
        } else if (subTicks != nullptr && points.size() <= mostSmallTicks) {
            subTicks->append(points[i]);
        }
    }
}
