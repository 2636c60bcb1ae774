#include "report/VerifyResult.h"

#include <algorithm>

namespace Mreport {

Divergence::Divergence(const RecordedCell& cell, std::string expectedText)
    : offset(cell.offset), place(cell.place), number(cell.number), channel(cell.channel),
      quantity(cell.quantity), potential(cell.potential), recorded(cell.text),
      expected(std::move(expectedText)) {}

void VerifyResult::AddDiverged(Divergence divergence) {
    ++diverged;
    if (divergences.size() < mostListed)
        divergences.push_back(std::move(divergence));
}

void VerifyResult::AddNotComputed(std::size_t channel, Quantity quantity, const std::string& why,
                                  std::int64_t count) {
    notComputed += count;
    const auto same = [&](const NotComputed& reason) {
        return reason.channel == channel && reason.quantity == quantity && reason.why == why;
    };
    const auto known = std::ranges::find_if(reasons, same);
    if (known != reasons.end())
        known->count += count;
    else
        reasons.push_back({channel, quantity, why, count});
}

std::string Grouped(std::int64_t count) {
    constexpr std::size_t groupLength = 3;
    std::string text = std::to_string(count);
    for (std::size_t place = text.size(); place > groupLength;) {
        place -= groupLength;
        text.insert(place, ",");
    }
    return text;
}

std::string ChannelName(std::size_t channel) {
    return "Chan " + std::to_string(channel + 1);
}

std::string VerdictText(const VerifyResult& result) {
    const auto count = [](std::int64_t number) { return number == 0 ? "none" : Grouped(number); };
    const std::int64_t values = result.reproduced + result.diverged + result.notComputed;
    return Grouped(result.records) + (result.records == 1 ? " record, " : " records, ") +
           Grouped(values) + (values == 1 ? " value: " : " values: ") + count(result.reproduced) +
           " reproduced, " + count(result.diverged) + " diverged, " + count(result.notComputed) +
           " not to be computed.";
}

std::string ReasonText(const NotComputed& reason) {
    return ChannelName(reason.channel) + " " + std::string(Quantities::Label(reason.quantity)) +
           ": " + Grouped(reason.count) + " not to be computed: " + reason.why;
}

} // namespace Mreport
