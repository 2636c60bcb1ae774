#pragma once

#include <cstddef>
#include <optional>

/// What an instrument can have; the tables of every module are laid out for the most.
inline constexpr int maxChannels = 8; ///< electrode channels, the slots of the per-channel tables
inline constexpr int tempSensorCount = 4;
/// Positions of one reading cycle: electrode channels 0..7, temperature sensors one to four 8..11.
inline constexpr int cyclePositions = maxChannels + tempSensorCount;

/// The position in a cycle of a temperature sensor by its number, 1 to 4; nothing for any other
/// number, which stands for none.
constexpr std::optional<std::size_t> SensorPosition(int sensor) {
    if (sensor < 1 || sensor > tempSensorCount)
        return std::nullopt;
    return static_cast<std::size_t>(maxChannels + sensor - 1);
}
