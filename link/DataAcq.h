#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

/// Moving averages of the latest readings over the twelve positions of a cycle.
namespace DataAcq {

extern std::int16_t AverageCount;    ///< readings averaged into one value
extern bool AveragePrimed;           ///< the history has been filled once in this series
extern std::int16_t AveragePos;      ///< next history row to overwrite
extern bool ReadingEnabled;          ///< cleared by a screen to abandon a read in progress
extern std::int16_t ConnectionState; ///< 1 once a value has been taken from the instrument

/// Shown by the screens when the link has failed.
inline constexpr std::string_view connectionMessage =
    "There are some problem on connection.\n"
    "Click on button Start to start reading again.";

/// A screen begins a series with this averaging number: not primed, reading enabled.
void StartSeries(std::int16_t averageCount);

/// The latest value of a position, 0..11. Lets events run first.
float GetChannelValue(std::int16_t channel);

/// The averages of all positions. Stops at once, leaving the rest untouched, when ReadingEnabled
/// is cleared meanwhile.
void ReadChannels(std::span<float, cyclePositions> result);

/// The number in a control's text; false, and `value` unchanged, when it is not one.
bool TryGetInteger(std::int16_t& value, std::string_view text);
bool TryGetSingle(float& value, std::string_view text);

/// Back to the state at program start.
void Reset();

} // namespace DataAcq
