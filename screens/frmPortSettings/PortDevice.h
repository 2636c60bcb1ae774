#pragma once

#include <filesystem>
#include <optional>

/// What stands behind COM1..COM16 on this computer.
namespace PortDevice {

/// The lowest number from 1 to 16 that neither a link nor a device of this computer stands behind;
/// nothing where all are taken.
std::optional<int> FreeNumber();

/// The place of the link that leads a number to a device of the user's choice.
std::filesystem::path LinkOf(int port);

} // namespace PortDevice
