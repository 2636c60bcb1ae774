#include "screens/controls/GraphPoints.h"

#include "screens/controls/SeriesStyle.h"

#include <algorithm>
#include <cmath>

void GraphPoints::SetSets(int count) {
    sets_ = std::clamp(count, 0, SeriesStyle::count);
    if (sets_ > std::ssize(all_))
        all_.resize(Index(sets_) + 1);
}

void GraphPoints::SetPoints(int count) {
    points_ = std::max(count, 0);
}

void GraphPoints::Select(int set) {
    selected_ = std::clamp(set, 1, SeriesStyle::count);
    if (selected_ > std::ssize(all_))
        all_.resize(Index(selected_) + 1);
}

void GraphPoints::SetValue(int point, double value) {
    if (point < 1)
        return;
    auto& values = Selected().values;
    if (point > std::ssize(values))
        values.resize(Index(point) + 1, noValue);
    values[Index(point)] = value;
}

void GraphPoints::ClearValues() {
    for (Set& set : all_)
        set.values.clear();
}

QString GraphPoints::Legend(int set) const {
    return set <= std::ssize(all_) ? all_[Index(set)].legend : QString();
}

int GraphPoints::StyleOf(int set) const {
    const bool told = set <= std::ssize(all_) && all_[Index(set)].style >= 0;
    return told ? all_[Index(set)].style : set - 1;
}

double GraphPoints::At(int set, int point) const {
    if (set < 1 || set > sets_ || point < 1 || point > points_)
        return noValue;
    const auto& values = all_[Index(set)].values;
    return point <= std::ssize(values) ? values[Index(point)] : noValue;
}

int GraphPoints::FirstSetWithValues() const {
    for (int set = 1; set <= sets_; ++set)
        for (int point = 1; point <= points_; ++point)
            if (!std::isnan(At(set, point)))
                return set;
    return 0;
}

GraphPoints::Range GraphPoints::Values() const {
    Range range;
    for (int set = 1; set <= sets_; ++set)
        for (int point = 1; point <= points_; ++point)
            if (const double value = At(set, point); std::isfinite(value)) {
                range.low = std::min(range.low, value);
                range.high = std::max(range.high, value);
            }
    return range;
}
