#include "link/DataAcq.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "link/CommPort.h"

#include <algorithm>
#include <vector>

namespace DataAcq {

std::int16_t AverageCount = 1;
bool AveragePrimed = false;
std::int16_t AveragePos = 0;
bool ReadingEnabled = false;
std::int16_t ConnectionState = 0;

namespace {

using Row = std::array<float, cyclePositions>;

std::vector<Row> History; ///< the last N values of each position
Row Sum{};                ///< of each column of History
unsigned series = 0;      ///< counts the starts, so that a pass of an earlier one ends itself

constexpr std::int16_t fittedElectrodes = 4;

std::size_t SlotOf(std::int16_t channel) {
    constexpr std::int16_t firstTemperature = maxChannels;
    if (channel >= firstTemperature)
        return 2 * static_cast<std::size_t>(channel - firstTemperature) + 1;
    if (channel > fittedElectrodes)
        return static_cast<std::size_t>(channel + 4);
    return static_cast<std::size_t>(2 * channel);
}

/// Takes a value while events run. False when the pass has been abandoned, by the screen or by a
/// new series that began meanwhile.
bool Take(std::size_t channel, unsigned atWork, float& value) {
    if (!ReadingEnabled || series != atWork)
        return false;
    value = GetChannelValue(static_cast<std::int16_t>(channel));
    return series == atWork;
}

/// Replaces the oldest reading of every position.
void ReadNext(std::span<float, cyclePositions> result) {
    const auto atWork = series;
    const auto row = static_cast<std::size_t>(AveragePos);
    for (std::size_t channel = 0; channel < result.size(); ++channel) {
        float value = 0;
        if (!Take(channel, atWork, value))
            return;
        Sum[channel] = value + Sum[channel] - History[row][channel];
        History[row][channel] = value;
        result[channel] = Sum[channel] / static_cast<float>(AverageCount);
    }
    AveragePos = static_cast<std::int16_t>((AveragePos + 1) % AverageCount);
}

/// Fills the whole history with the first readings of a series.
void Prime(std::span<float, cyclePositions> result) {
    const auto atWork = ++series;
    const auto rows = static_cast<std::size_t>(std::max<std::int16_t>(AverageCount, 1));
    Sum.fill(0);
    History.assign(rows, Row{});
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t channel = 0; channel < result.size(); ++channel) {
            float value = 0;
            if (!Take(channel, atWork, value))
                return;
            History[row][channel] = value;
            Sum[channel] += value;
        }
    }
    for (std::size_t channel = 0; channel < result.size(); ++channel)
        result[channel] = Sum[channel] / static_cast<float>(rows);
    AveragePrimed = true;
    AveragePos = 0;
}

} // namespace

void StartSeries(std::int16_t averageCount) {
    ++series;
    AverageCount = std::max<std::int16_t>(averageCount, 1);
    AveragePrimed = false;
    ReadingEnabled = true;
}

float GetChannelValue(std::int16_t channel) {
    Mcommon::LetEventsRun();
    const auto slot = SlotOf(channel);
    ConnectionState = 1;
    if (channel >= fittedElectrodes && channel < maxChannels)
        return 0; // a 4-channel instrument has no such electrode
    return CommPort::Readings.at(slot);
}

void ReadChannels(std::span<float, cyclePositions> result) {
    if (AveragePrimed && History.size() == static_cast<std::size_t>(AverageCount))
        ReadNext(result);
    else
        Prime(result);
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
    ++series;
    AverageCount = 1;
    AveragePrimed = false;
    AveragePos = 0;
    ReadingEnabled = false;
    ConnectionState = 0;
    History.clear();
    Sum.fill(0);
}

} // namespace DataAcq
