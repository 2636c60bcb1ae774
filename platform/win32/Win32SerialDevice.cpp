#include "platform/SerialDevice.h"

#include "base/RunTimeError.h"

#include <windows.h>

namespace platform {
namespace {

/// The system itself opens a serial device for one program only.
class Win32DeviceClaim : public DeviceClaim {};

} // namespace

std::string InUse(const std::string& device) {
    return device + " is in use by another program";
}

std::string WhyDeviceCannotOpen(const std::string& /*device*/) {
    return {};
}

std::unique_ptr<DeviceClaim> ClaimDevice(std::intptr_t /*handle*/) {
    return std::make_unique<Win32DeviceClaim>();
}

bool DeviceHasGone(std::intptr_t handle) {
    DCB state{};
    state.DCBlength = sizeof state;
    return !::GetCommState(reinterpret_cast<HANDLE>(handle), &state);
}

void SetDriverTimeouts(std::intptr_t handle, const CommTimeouts& timeouts) {
    COMMTIMEOUTS record{};
    record.ReadIntervalTimeout = timeouts.readInterval;
    record.ReadTotalTimeoutMultiplier = timeouts.readTotalMultiplier;
    record.ReadTotalTimeoutConstant = timeouts.readTotalConstant;
    record.WriteTotalTimeoutMultiplier = timeouts.writeTotalMultiplier;
    record.WriteTotalTimeoutConstant = timeouts.writeTotalConstant;
    if (!::SetCommTimeouts(reinterpret_cast<HANDLE>(handle), &record))
        throw RunTimeError("Setting the port's time-outs failed");
}

} // namespace platform
