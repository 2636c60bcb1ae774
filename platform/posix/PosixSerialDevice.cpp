#include "platform/SerialDevice.h"

#include "platform/posix/DeviceHolder.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace platform {
namespace {

/// The group that the device lets in besides its owner, empty where there is none.
std::string GroupWithAccess(const struct stat& status) {
    constexpr mode_t readAndWrite = S_IRGRP | S_IWGRP;
    if ((status.st_mode & readAndWrite) != readAndWrite)
        return {};
    std::array<char, 4096> buffer{};
    struct group entry {};
    struct group* found = nullptr;
    if (getgrgid_r(status.st_gid, &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return entry.gr_name;
}

class PosixDeviceClaim : public DeviceClaim {
public:
    explicit PosixDeviceClaim(int handle) : handle_(handle) {}
    ~PosixDeviceClaim() override { flock(handle_, LOCK_UN); }
    PosixDeviceClaim(const PosixDeviceClaim&) = delete;
    PosixDeviceClaim& operator=(const PosixDeviceClaim&) = delete;

private:
    int handle_;
};

/// Looks without touching the line: its settings and its bytes stay as they are.
bool IsHeldByAnother(const std::string& device) {
    const int descriptor = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return errno == EBUSY;
    const bool held = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(descriptor);
    return held;
}

} // namespace

std::string InUse(const std::string& device) {
    const auto holder = HolderOfDevice(device);
    return device + " is in use by another program" + (holder.empty() ? "" : ": " + holder);
}

std::string WhyDeviceCannotOpen(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return device + " is not connected";
        if (errno == EACCES)
            return "no permission for the folder of " + device;
        return {};
    }
    if (!S_ISCHR(status.st_mode))
        return device + " is not a serial device";
    if (access(device.c_str(), R_OK | W_OK) == 0)
        return IsHeldByAnother(device) ? InUse(device) : std::string();
    if (errno != EACCES)
        return {};
    const auto group = GroupWithAccess(status);
    const auto reason = "no permission to use " + device;
    if (group.empty() || group == "root")
        return reason + "; ask the administrator for access to it";
    return reason + "; join the group \"" + group + "\" (sudo usermod -aG " + group +
           " <your user name>) and log in again";
}

std::unique_ptr<DeviceClaim> ClaimDevice(std::intptr_t handle) {
    const int descriptor = static_cast<int>(handle);
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return nullptr;
    return std::make_unique<PosixDeviceClaim>(descriptor);
}

bool DeviceHasGone(std::intptr_t handle) {
    pollfd state{static_cast<int>(handle), 0, 0};
    termios settings{};
    return (poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) ||
           tcgetattr(state.fd, &settings) != 0;
}

} // namespace platform
