#include "report/SpanStatistics.h"

#include "base/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ratio>

namespace Mreport {

namespace {

using Hours = std::chrono::duration<double, std::ratio<3600>>;

/// The number with so many significant digits.
std::string Significant(double value, int digits) {
    if (value == 0 || !std::isfinite(value))
        return NumberText::Plain(static_cast<float>(value));
    const int exponent = static_cast<int>(std::floor(std::log10(std::fabs(value))));
    const double unit = std::pow(10.0, exponent - digits + 1);
    return NumberText::Plain(static_cast<float>(std::round(value / unit) * unit));
}

} // namespace

void SpanStatistics::Take(std::size_t series, double value, const std::optional<RecordTime>& time) {
    if (std::isnan(value))
        return;
    Sums& sums = sums_[series];
    if (sums.count == 0)
        sums.origin = sums.smallest = sums.largest = value;
    ++sums.count;
    sums.smallest = std::min(sums.smallest, value);
    sums.largest = std::max(sums.largest, value);
    const double above = value - sums.origin;
    sums.values += above;
    sums.squares += above * above;
    if (!time)
        return;
    if (sums.timed == 0)
        sums.start = *time;
    ++sums.timed;
    const double hours = Hours(*time - sums.start).count();
    sums.times_h += hours;
    sums.timeSquares += hours * hours;
    sums.timedValues += above;
    sums.products += hours * above;
}

SeriesStatistics SpanStatistics::Of(std::size_t series) const {
    const Sums& sums = sums_[series];
    SeriesStatistics result;
    result.count = sums.count;
    if (sums.count == 0)
        return result;
    const auto count = static_cast<double>(sums.count);
    result.mean = sums.origin + sums.values / count;
    result.smallest = sums.smallest;
    result.largest = sums.largest;
    if (sums.count > 1) {
        const double spread = sums.squares - sums.values * sums.values / count;
        result.deviation = std::sqrt(std::max(spread, 0.0) / (count - 1));
    }
    const auto timed = static_cast<double>(sums.timed);
    const double width = timed * sums.timeSquares - sums.times_h * sums.times_h;
    if (width > 0)
        result.drift_per_hour = (timed * sums.products - sums.times_h * sums.timedValues) / width;
    return result;
}

std::vector<std::string> StatisticsHeading(std::string_view unit) {
    return {"n", "Mean", "SD", "Smallest", "Largest", "Drift, " + std::string(unit) + "/h"};
}

std::vector<std::string> StatisticsTexts(const SeriesStatistics& statistics) {
    constexpr int meanDigits = 6;
    constexpr int spreadDigits = 3;
    std::vector<std::string> texts(statisticsColumns);
    texts[0] = std::to_string(statistics.count);
    if (statistics.count == 0)
        return texts;
    texts[1] = Significant(statistics.mean, meanDigits);
    if (statistics.deviation)
        texts[2] = Significant(*statistics.deviation, spreadDigits);
    texts[3] = NumberText::Plain(static_cast<float>(statistics.smallest));
    texts[4] = NumberText::Plain(static_cast<float>(statistics.largest));
    if (statistics.drift_per_hour)
        texts[5] = Significant(*statistics.drift_per_hour, spreadDigits);
    return texts;
}

} // namespace Mreport
