#pragma once

#include <QString>

/// What stands behind COM1..COM16 on this computer, as the port screen shows it.
namespace PortDevice {

/// The device of a port, for example "/dev/ttyUSB0"; empty where there is none.
QString NameOf(int port);

/// The device with, where the system knows it, what the maker calls it: "/dev/ttyUSB0 - USB Serial
/// Converter (maker)".
QString DescriptionOf(int port);

} // namespace PortDevice
