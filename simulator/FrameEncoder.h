#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace simulator {

inline constexpr std::size_t frameValues = 8;
inline constexpr std::size_t frameLength = 48;
inline constexpr std::uint8_t tab = 0x09;
inline constexpr std::uint8_t endOfTransmission = 0x04;

/// Values in frame order: E1 in mV, T1 in sensor units, E2, T2, E3, T3, E4, T4.
using Values = std::array<double, frameValues>;
using Frame = std::array<std::uint8_t, frameLength>;

/// Each value as a sign, four digits in tenths and a TAB, EOT after the last. Tenths round half
/// away from zero; what four digits cannot hold stays at 999.9 or -999.9, as the instrument's
/// converter does at the end of its range.
Frame EncodeFrame(const Values& values);

} // namespace simulator
