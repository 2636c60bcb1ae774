#pragma once

#include <QString>

namespace platform {

/// What the system knows of COM1..COM16.
struct PortInfo {
    /// What stands behind the number, for example "/dev/ttyUSB0 - USB Serial Converter (maker)";
    /// on Windows, where the port is called by its number, "USB Serial Port (maker)". Empty where
    /// nothing is known.
    QString description;
    bool isThere = false; ///< the system has the device
};

PortInfo InfoOfPort(int number);

} // namespace platform
