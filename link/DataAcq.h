#pragma once

#include "link/ChannelReader.h"

#include <cstdint>
#include <span>
#include <string_view>

/// The program's channel reader, over the readings of the program's link.
namespace DataAcq {

/// Shown by the screens when the link has failed.
inline constexpr std::string_view connectionMessage =
    "There are some problem on connection.\n"
    "Click on button Start to start reading again.";

/// The one reader of the program, with its averaging state.
ChannelReader& Reader();

/// As ChannelReader's of the same names.
void StartSeries(int averageCount);
float GetChannelValue(std::int16_t channel);
void ReadChannels(std::span<float, cyclePositions> result);

/// The number in a control's text; false, and `value` unchanged, when it is not one.
bool TryGetInteger(std::int16_t& value, std::string_view text);
bool TryGetSingle(float& value, std::string_view text);

/// Back to the state at program start.
void Reset();

} // namespace DataAcq
