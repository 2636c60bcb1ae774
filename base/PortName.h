#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// The names of serial ports, COM1..COM16.
namespace PortName {

inline constexpr int last = 16;

/// "COM5" for 5.
std::string Of(int number);

/// 5 for "COM5"; 0 where behind the first three characters stands no number.
int NumberOf(std::string_view name);

/// The place of the link that leads a number to a device of the user's choice, within the program's
/// configuration folder.
std::filesystem::path LinkIn(const std::filesystem::path& configurationFolder, int number);

} // namespace PortName
