#include "link/DataAcq.h"

#include "base/NumberText.h"
#include "link/CommPort.h"

#include <optional>

namespace DataAcq {
namespace {

std::optional<ChannelReader>& Owner() {
    static std::optional<ChannelReader> owner;
    return owner;
}

} // namespace

ChannelReader& Reader() {
    auto& owner = Owner();
    return owner ? *owner : owner.emplace(CommPort::Readings());
}

void StartSeries(int averageCount) {
    Reader().StartSeries(averageCount);
}

float GetChannelValue(std::int16_t channel) {
    return Reader().GetChannelValue(static_cast<std::size_t>(channel));
}

void ReadChannels(std::span<float, cyclePositions> result) {
    Reader().ReadChannels(result);
}

bool TryGetInteger(std::int16_t& value, std::string_view text) {
    const auto number = NumberText::StrictInteger(text);
    value = number.value_or(value);
    return number.has_value();
}

bool TryGetSingle(float& value, std::string_view text) {
    const auto number = NumberText::StrictSingle(text);
    value = number.value_or(value);
    return number.has_value();
}

void Reset() {
    Owner().reset();
}

} // namespace DataAcq
