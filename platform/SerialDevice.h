#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// Why a serial device cannot be opened, from what the system tells about it, for the end of an
/// error message: it is missing, the user may not (with the group to join), or another program
/// holds it. Empty where the system gives no such reason; the opening's own error then counts.
std::string WhyDeviceCannotOpen(const std::string& device);

/// That another program holds the device, and which one where that can be known: the end of an
/// error message.
std::string InUse(const std::string& device);

/// A claim on an open device that programs of the same habit respect, held until destroyed.
class DeviceClaim {
public:
    virtual ~DeviceClaim() = default;
};

/// Claims the device behind an open handle; nothing when another program holds it. The claim ends
/// before the handle is closed.
std::unique_ptr<DeviceClaim> ClaimDevice(std::intptr_t handle);

/// True when the device behind an open handle has been unplugged.
bool DeviceHasGone(std::intptr_t handle);

} // namespace platform
