#include "settings/StoredLimits.h"

#include "settings/StoredLines.h"

#include <array>
#include <string_view>

namespace mWinInit {

namespace {

const std::string limitsSection = "Limits";
constexpr char separator = ','; ///< unit, low, high; an end that is open is empty

std::string Key(std::size_t channel) {
    return "Channel " + std::to_string(channel + 1);
}

std::string EndText(const std::optional<float>& end) {
    return end ? NumberText::Plain(*end) : std::string();
}

std::string LineOf(const Limits& limits) {
    if (!limits.AreSet())
        return {};
    return std::string(Quantities::Label(limits.quantity)) + separator + EndText(limits.low) +
           separator + EndText(limits.high);
}

/// The text up to the next separator, which is taken away with it.
std::string_view TakeField(std::string_view& line) {
    const auto end = line.find(separator);
    const std::string_view field = line.substr(0, end);
    line = end == std::string_view::npos ? std::string_view() : line.substr(end + 1);
    return field;
}

Limits LimitsOf(std::string_view line) {
    const auto quantity = Quantities::WithLabel(TakeField(line));
    const std::string_view lowText = TakeField(line);
    const std::string_view highText = TakeField(line);
    const auto low = NumberText::StrictSingle(lowText);
    const auto high = NumberText::StrictSingle(highText);
    const bool readable = quantity && line.empty() && low.has_value() == !lowText.empty() &&
                          high.has_value() == !highText.empty();
    if (!readable || (high && low > high)) // an open low end is below every number
        return {};
    return {low, high, *quantity};
}

} // namespace

ChannelLimits LoadLimits() {
    ChannelLimits limits;
    for (std::size_t i = 0; i < limits.size(); ++i)
        limits[i] = LimitsOf(ReadValue(limitsSection, Key(i)));
    return limits;
}

std::vector<std::string> SaveLimits(const ChannelLimits& limits) {
    const ChannelLimits stored = LoadLimits();
    LineWriter writer;
    for (std::size_t i = 0; i < limits.size(); ++i)
        if (limits[i] != stored[i])
            writer.WriteLine(limitsSection, Key(i), LineOf(limits[i]));
    return writer.TakeMessages();
}

} // namespace mWinInit
