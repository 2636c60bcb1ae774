#pragma once

#include <string>
#include <string_view>

/// The names of serial ports, COM1..COM16.
namespace PortName {

inline constexpr int last = 16;

/// "COM5" for 5.
std::string Of(int number);

/// 5 for "COM5"; 0 where behind the first three characters stands no number.
int NumberOf(std::string_view name);

} // namespace PortName
