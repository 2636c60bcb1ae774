#pragma once

#include <chrono>
#include <string>

namespace simulator {

/// Time since an arbitrary start. Nothing below the program's loop asks for the time: it is handed
/// in, so that a test runs through an hour without waiting.
using Seconds = std::chrono::duration<double>;

inline constexpr int channelCount = 4;
inline constexpr double absoluteZero_C = -273.15;

/// A number with a fixed count of decimals, whatever the locale.
std::string Fixed(double value, int decimals);

/// A number as short as it can be told, for example "0.5" or "1e-05".
std::string Short(double value);

} // namespace simulator
