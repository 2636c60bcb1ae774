#pragma once

#include "report/RunOverview.h"

#include <optional>
#include <string>
#include <vector>

namespace Mreport {

/// What lies between two records of a run in one series.
struct CursorDifference {
    double difference = 0;
    std::optional<double> rate_per_hour; ///< nothing where the records' times are equal or unknown
};

/// From the first group of records to the second; nothing where one of them has no value. A group
/// of several records stands for the middle of its values.
std::optional<CursorDifference> DifferenceBetween(const RunOverview& run, std::size_t series,
                                                  std::size_t first, std::size_t second);

/// "Records 10 to 60, 0:00:50: Ch. 1 +5.0 mV, +360.0 mV/h; Ch. 2 ..."; series without a value are
/// left out.
std::string CursorText(const RunOverview& run, const std::vector<std::string>& names,
                       Quantity quantity, std::size_t first, std::size_t second);

} // namespace Mreport
