#pragma once

#include "report/RunOverview.h"

namespace Mreport {

/// The scale over which series of a run are drawn, linear or logarithmic: from the smallest to the
/// largest value that it has a place for.
class RunScale {
public:
    explicit RunScale(bool log = false) : log_(log) {}

    /// Takes what a series has in these records. A logarithmic scale leaves out what is not above
    /// 0.
    void Take(const RunOverview& run, std::size_t series, const RecordSpan& shown);
    void Take(const RunScale& other) { range_.Take(other.range_); }

    bool Any() const { return range_.Any(); }
    double Low() const { return range_.low; }
    double High() const { return range_.high; }
    bool IsLog() const { return log_; }

    /// Where a value lies: 0 at the low end, 1 at the high end, the middle where both are one;
    /// not-a-number for a value that a logarithmic scale has no place for.
    double ShareOf(double value) const;

private:
    double OnAxis(double value) const;

    bool log_;
    RunOverview::Range range_;
};

} // namespace Mreport
