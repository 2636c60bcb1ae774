#pragma once

#include <string>

/// The system's own list of its serial ports. Windows only: elsewhere Qt knows it.
namespace platform {

/// What the maker calls the device behind a COM port, for example "USB Serial Port (maker)"; empty
/// where the system lists none.
std::wstring FriendlyNameOfPort(int number);

/// The system has a port of this number, whether or not it can be opened.
bool IsPortThere(int number);

} // namespace platform
