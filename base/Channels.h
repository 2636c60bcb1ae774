#pragma once

/// What an instrument can have; the tables of every module are laid out for the most.
inline constexpr int maxChannels = 8; ///< electrode channels, the slots of the per-channel tables
inline constexpr int tempSensorCount = 4;
/// Positions of one reading cycle: electrode channels 0..7, temperature sensors one to four 8..11.
inline constexpr int cyclePositions = maxChannels + tempSensorCount;
