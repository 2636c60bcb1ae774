#include "report/RunScale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Mreport {

void RunScale::Take(const RunOverview& run, std::size_t series, const RecordSpan& shown) {
    if (!log_)
        return range_.Take(run.RangeOf(series, shown));
    const std::int64_t columnForEach = std::max(shown.Count(), std::int64_t{1});
    for (const auto& [column, values] : run.Columns(series, shown, columnForEach))
        for (const float value : {values.low, values.high})
            if (values.Any() && value > 0)
                range_.Take(value);
}

double RunScale::OnAxis(double value) const {
    return log_ ? std::log10(value) : value;
}

double RunScale::ShareOf(double value) const {
    if (log_ && value <= 0)
        return std::numeric_limits<double>::quiet_NaN();
    const double low = OnAxis(range_.low);
    const double height = OnAxis(range_.high) - low;
    return height > 0 ? (OnAxis(value) - low) / height : 0.5;
}

} // namespace Mreport
