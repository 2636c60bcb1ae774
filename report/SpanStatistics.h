#pragma once

#include "report/RecordTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// What the values of one series say in a span.
struct SeriesStatistics {
    std::int64_t count = 0;
    double mean = 0; ///< these four are 0 without a value
    double smallest = 0;
    double largest = 0;
    std::optional<double> deviation;      ///< standard deviation of a sample; from two values on
    std::optional<double> drift_per_hour; ///< slope by least squares; from two moments on
};

/// Gathers the statistics of a span, record by record, in any order.
class SpanStatistics {
public:
    explicit SpanStatistics(std::size_t series = 0) : sums_(series) {}

    /// A value of a series; not-a-number is passed over. A record without a time counts for all but
    /// the drift.
    void Take(std::size_t series, double value, const std::optional<RecordTime>& time);

    std::size_t SeriesCount() const { return sums_.size(); }
    SeriesStatistics Of(std::size_t series) const;

private:
    /// Relative to the first value and the first time: large values and times cost no digits.
    struct Sums {
        std::int64_t count = 0;
        double origin = 0;
        double smallest = 0;
        double largest = 0;
        double values = 0;
        double squares = 0;

        std::int64_t timed = 0; ///< values with a time
        RecordTime start{};
        double times_h = 0;
        double timeSquares = 0;
        double timedValues = 0;
        double products = 0;
    };

    std::vector<Sums> sums_;
};

/// The columns of the table of statistics, and the texts of a series in them. Smallest and largest
/// are written as they were recorded, the others with the digits that tell something.
inline constexpr std::size_t statisticsColumns = 6;
std::vector<std::string> StatisticsHeading(std::string_view unit);
std::vector<std::string> StatisticsTexts(const SeriesStatistics& statistics);

} // namespace Mreport
