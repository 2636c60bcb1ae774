#pragma once

#include <QString>

#include <filesystem>
#include <optional>

/// What stands behind COM1..COM16 on this computer, as the port screen shows it.
namespace PortDevice {

/// The device of a port, for example "/dev/ttyUSB0"; empty where there is none.
QString NameOf(int port);

/// The device with, where the system knows it, what the maker calls it: "/dev/ttyUSB0 - USB Serial
/// Converter (maker)".
QString DescriptionOf(int port);

/// The lowest number from 1 to 16 that neither a link nor a device of this computer stands behind;
/// nothing where all are taken.
std::optional<int> FreeNumber();

/// The place of the link that leads a number to a device of the user's choice.
std::filesystem::path LinkOf(int port);

} // namespace PortDevice
