#include "report/RunCursors.h"

#include "base/NumberText.h"

#include <chrono>

namespace Mreport {

namespace {

std::optional<double> ValueAt(const RunOverview& run, std::size_t series, std::size_t group) {
    const RunOverview::Range& range = run.At(group, series);
    if (!range.Any())
        return std::nullopt;
    return (static_cast<double>(range.low) + static_cast<double>(range.high)) / 2;
}

/// With its sign, "+5.0".
std::string Signed(double value, Quantity quantity) {
    const std::string text =
        NumberText::Format(static_cast<float>(value), Quantities::Of(quantity).pattern);
    return text.starts_with('-') ? text : "+" + text;
}

/// "h:mm:ss".
std::string Duration(std::chrono::seconds time) {
    const std::chrono::hh_mm_ss parts(time);
    const auto two = [](auto count) { return (count < 10 ? "0" : "") + std::to_string(count); };
    return (time.count() < 0 ? "-" : "") + std::to_string(parts.hours().count()) + ":" +
           two(parts.minutes().count()) + ":" + two(parts.seconds().count());
}

} // namespace

std::optional<CursorDifference> DifferenceBetween(const RunOverview& run, std::size_t series,
                                                  std::size_t first, std::size_t second) {
    const auto from = ValueAt(run, series, first);
    const auto to = ValueAt(run, series, second);
    if (!from || !to)
        return std::nullopt;
    CursorDifference result{*to - *from, std::nullopt};
    const auto& begin = run.At(first).begin;
    const auto& end = run.At(second).begin;
    if (begin && end && *begin != *end) {
        using Hours = std::chrono::duration<double, std::ratio<3600>>;
        result.rate_per_hour = result.difference / Hours(*end - *begin).count();
    }
    return result;
}

std::string CursorText(const RunOverview& run, const std::vector<std::string>& names,
                       Quantity quantity, std::size_t first, std::size_t second) {
    const RunOverview::Group& begin = run.At(first);
    const RunOverview::Group& end = run.At(second);
    std::string text =
        "Records " + std::to_string(begin.number) + " to " + std::to_string(end.number);
    if (begin.begin && end.begin)
        text += ", " + Duration(*end.begin - *begin.begin);
    const std::string unit(Quantities::Label(quantity));
    std::string separator = ": ";
    for (std::size_t s = 0; s < names.size(); ++s) {
        const auto found = DifferenceBetween(run, s, first, second);
        if (!found)
            continue;
        text.append(separator).append(names[s]).append(" ");
        text.append(Signed(found->difference, quantity)).append(" ").append(unit);
        if (found->rate_per_hour)
            text += ", " + Signed(*found->rate_per_hour, quantity) + " " + unit + "/h";
        separator = "; ";
    }
    return text;
}

} // namespace Mreport
