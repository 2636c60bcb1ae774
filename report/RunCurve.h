#pragma once

#include "report/RunOverview.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Mreport {

/// What a run is drawn along.
enum class RunAxis { record, time };

/// Where a group of records lies along the axis: its first record's number, or its first time in
/// seconds since 1970 on the wall clock. Nothing where it has none.
std::optional<double> PlaceOnAxis(const RunOverview::Group& group, RunAxis axis);

/// The group of a run that lies nearest to a place of the axis.
std::optional<std::size_t> NearestGroup(const RunOverview& run, RunAxis axis, double x);

/// A point of a curve: everything between low and high lies at this x.
struct CurvePoint {
    double x = 0;             ///< record number, or seconds since 1970 on the wall clock
    RunOverview::Range range; ///< empty where the curve is interrupted

    bool operator==(const CurvePoint&) const = default;
};

/// Where the shown records begin and end along the axis. By time the records' own order counts:
/// first to last.
struct CurveExtent {
    double begin = 0;
    double end = 1; ///< never smaller than begin
};
CurveExtent ExtentOf(const RunOverview& run, const RecordSpan& shown, RunAxis axis);

/// A series as it is drawn over so many columns of pixels: a point for each column that has
/// records, in the order of the records, and an empty one where the curve is interrupted: records
/// without a value, and by time a real gap. Records without a time are left out by time.
std::vector<CurvePoint> CurveOf(const RunOverview& run, std::size_t series, const RecordSpan& shown,
                                RunAxis axis, int width);

} // namespace Mreport
