#include "report/RunCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Mreport {

namespace {

using Group = RunOverview::Group;
using Groups = RunOverview::Groups;

/// A run is taken for interrupted where so many times its usual step passes between two groups.
constexpr double stepsOfGap = 5;
constexpr double shortestGap_s = 2;

double Seconds(RecordTime time) {
    return static_cast<double>(time.time_since_epoch().count());
}

/// The time from one group to the next that half of the groups keep.
double UsualStep_s(const RunOverview& run, const Groups& groups) {
    std::vector<double> steps;
    for (std::size_t i = groups.first; i + 1 < groups.end; ++i) {
        const auto here = PlaceOnAxis(run.At(i), RunAxis::time);
        const auto next = PlaceOnAxis(run.At(i + 1), RunAxis::time);
        if (here && next)
            steps.push_back(std::abs(*next - *here));
    }
    if (steps.empty())
        return 0;
    const auto middle = steps.begin() + std::ssize(steps) / 2;
    std::ranges::nth_element(steps, middle);
    return *middle;
}

/// Puts the groups into columns one after the other.
class CurveMaker {
public:
    CurveMaker(const CurveExtent& extent, int width)
        : begin_(extent.begin),
          columnsPerUnit_(static_cast<double>(width) / std::max(extent.end - extent.begin, 1e-9)) {}

    void Take(double x, const RunOverview::Range& range) {
        const double column = std::floor((x - begin_) * columnsPerUnit_);
        if (curve_.empty() || column != column_ || interrupted_)
            curve_.push_back({x, {}});
        column_ = column;
        interrupted_ = false;
        curve_.back().range.Take(range);
    }
    void Interrupt() {
        if (!curve_.empty() && curve_.back().range.Any())
            curve_.push_back({curve_.back().x, {}});
        interrupted_ = true;
    }
    std::vector<CurvePoint> Curve() { return std::move(curve_); }

private:
    double begin_;
    double columnsPerUnit_;
    double column_ = 0;
    bool interrupted_ = false;
    std::vector<CurvePoint> curve_;
};

} // namespace

std::optional<double> PlaceOnAxis(const Group& group, RunAxis axis) {
    if (group.records == 0)
        return std::nullopt;
    if (axis == RunAxis::record)
        return group.number;
    return group.begin ? std::optional(Seconds(*group.begin)) : std::nullopt;
}

std::optional<std::size_t> NearestGroup(const RunOverview& run, RunAxis axis, double x) {
    std::optional<std::size_t> nearest;
    double least = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < run.GroupCount(); ++i) {
        const auto place = PlaceOnAxis(run.At(i), axis);
        if (!place || std::abs(*place - x) >= least)
            continue;
        least = std::abs(*place - x);
        nearest = i;
    }
    return nearest;
}

CurveExtent ExtentOf(const RunOverview& run, const RecordSpan& shown, RunAxis axis) {
    const Groups groups = run.GroupsOf(shown);
    CurveExtent extent;
    bool found = false;
    for (std::size_t i = groups.first; i < groups.end; ++i) {
        const Group& group = run.At(i);
        const auto begin = PlaceOnAxis(group, axis);
        if (!begin)
            continue;
        const double end = axis == RunAxis::record
                               ? *begin + static_cast<double>(run.RecordsPerGroup()) - 1
                               : Seconds(group.end.value_or(*group.begin));
        extent.begin = found ? std::min(extent.begin, *begin) : *begin;
        extent.end = found ? std::max(extent.end, end) : end;
        found = true;
    }
    return extent;
}

std::vector<CurvePoint> CurveOf(const RunOverview& run, std::size_t series, const RecordSpan& shown,
                                RunAxis axis, int width) {
    const Groups groups = run.GroupsOf(shown);
    CurveMaker maker(ExtentOf(run, shown, axis), width);
    const double gap =
        axis == RunAxis::time ? std::max(stepsOfGap * UsualStep_s(run, groups), shortestGap_s) : 0;
    std::optional<double> before;
    for (std::size_t i = groups.first; i < groups.end; ++i) {
        const auto x = PlaceOnAxis(run.At(i), axis);
        if (!x)
            continue;
        if (axis == RunAxis::time && before && std::abs(*x - *before) > gap)
            maker.Interrupt();
        before = x;
        maker.Take(*x, run.At(i, series));
    }
    return maker.Curve();
}

} // namespace Mreport
