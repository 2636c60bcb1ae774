#include "link/ChannelReader.h"

#include "app/Mcommon.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t fittedElectrodes = 4;
constexpr std::size_t firstTemperature = maxChannels;

/// In the order of a frame: E1, T1, ... E4, T4.
std::size_t SlotOf(std::size_t channel) {
    return channel < firstTemperature ? 2 * channel : 2 * (channel - firstTemperature) + 1;
}

} // namespace

void ChannelReader::StartSeries(int averageCount) {
    ++series_;
    AverageCount = static_cast<std::int16_t>(std::max(averageCount, 1));
    AveragePrimed = false;
    ReadingEnabled = true;
}

float ChannelReader::GetChannelValue(std::size_t channel) {
    Mcommon::LetEventsRun();
    ConnectionState = 1;
    if (channel >= fittedElectrodes && channel < firstTemperature)
        return 0; // a 4-channel instrument has no such electrode
    return readings_.at(SlotOf(channel));
}

void ChannelReader::ReadChannels(std::span<float, cyclePositions> result) {
    if (AveragePrimed && std::cmp_equal(History.size(), AverageCount))
        ReadNext(result);
    else
        Prime(result);
}

/// Takes a value while events run. Nothing when the pass has been abandoned, by the screen or by a
/// new series that began meanwhile.
std::optional<float> ChannelReader::Take(std::size_t channel, unsigned atWork) {
    if (!ReadingEnabled)
        return std::nullopt;
    const float value = GetChannelValue(channel);
    return series_ == atWork ? std::optional(value) : std::nullopt;
}

/// Replaces the oldest reading of every position.
void ChannelReader::ReadNext(std::span<float, cyclePositions> result) {
    const auto atWork = series_;
    CycleValues& oldest = History[static_cast<std::size_t>(AveragePos)];
    for (std::size_t channel = 0; channel < result.size(); ++channel) {
        const auto value = Take(channel, atWork);
        if (!value)
            return;
        Sum[channel] += double{*value} - double{oldest[channel]};
        oldest[channel] = *value;
        result[channel] = static_cast<float>(Sum[channel] / AverageCount);
    }
    AveragePos = static_cast<std::int16_t>((AveragePos + 1) % AverageCount);
}

/// Fills the whole history with the first readings of a series.
void ChannelReader::Prime(std::span<float, cyclePositions> result) {
    const auto atWork = ++series_;
    AverageCount = std::max<std::int16_t>(AverageCount, 1);
    Sum.fill(0);
    History.assign(static_cast<std::size_t>(AverageCount), CycleValues{});
    // By index: a series that begins while events run lays the history out anew.
    for (std::size_t row = 0; row < History.size(); ++row) {
        for (std::size_t channel = 0; channel < result.size(); ++channel) {
            const auto value = Take(channel, atWork);
            if (!value)
                return;
            History[row][channel] = *value;
            Sum[channel] += double{*value};
        }
    }
    for (std::size_t channel = 0; channel < result.size(); ++channel)
        result[channel] = static_cast<float>(Sum[channel] / AverageCount);
    AveragePrimed = true;
    AveragePos = 0;
}
