#pragma once

#include "base/Channels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Values of one cycle by position or slot.
using CycleValues = std::array<float, cyclePositions>;

/// Moving averages over the twelve positions of a cycle, taken from the table that the link fills.
/// A screen begins a series by its averaging number; the first pass fills the history, every later
/// one replaces its oldest row.
class ChannelReader {
public:
    /// The table, in the order of a frame, must outlive the reader.
    explicit ChannelReader(const CycleValues& readings) : readings_(readings) {}

    std::int16_t AverageCount = 1;    ///< readings averaged into one value
    bool AveragePrimed = false;       ///< the history has been filled once in this series
    std::int16_t AveragePos = 0;      ///< next history row to overwrite
    bool ReadingEnabled = false;      ///< cleared by a screen to abandon a pass at work
    std::int16_t ConnectionState = 0; ///< 1 once a value has been taken from the instrument

    /// Begins a series; a number below 1 counts as 1. A pass at work ends without a result.
    void StartSeries(int averageCount);

    /// The latest value of a position, 0..11. Lets events run first.
    float GetChannelValue(std::size_t channel);

    /// The averages of all positions. Stops at once, leaving the rest untouched, when
    /// ReadingEnabled is cleared or a new series begins meanwhile.
    void ReadChannels(std::span<float, cyclePositions> result);

private:
    void Prime(std::span<float, cyclePositions> result);
    void ReadNext(std::span<float, cyclePositions> result);
    std::optional<float> Take(std::size_t channel, unsigned atWork);

    const CycleValues& readings_;
    std::vector<CycleValues> History; ///< the last N values of each position
    /// Of each column of History. In double each sum of values that frames hold is exact, so that
    /// equal readings average to themselves whatever came before them.
    std::array<double, cyclePositions> Sum{};
    unsigned series_ = 0; ///< counts the starts, so that a pass of an earlier one ends itself
};
