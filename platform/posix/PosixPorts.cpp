#include "platform/System.h"

#include "base/PortName.h"

#include <array>
#include <system_error>

namespace platform {

namespace {

constexpr int portsOfAKind = 4;
constexpr std::array<const char*, 4> devicePrefixes = {"/dev/ttyS", "/dev/ttyUSB", "/dev/ttyACM",
                                                       "/dev/rfcomm"};

} // namespace

std::string DeviceOfPort(int number, const std::filesystem::path& configurationFolder) {
    if (number < 1 || number > portsOfAKind * static_cast<int>(devicePrefixes.size()))
        return {};
    const auto link = PortName::LinkIn(configurationFolder, number);
    std::error_code unreadable;
    // The link counts even while what it points to is missing: the port is then said to have gone.
    if (std::filesystem::exists(std::filesystem::symlink_status(link, unreadable)))
        return link.string();
    const int index = number - 1;
    return devicePrefixes[static_cast<std::size_t>(index / portsOfAKind)] +
           std::to_string(index % portsOfAKind);
}

std::filesystem::path SystemTemporaryFolder() {
    return "/var/tmp";
}

} // namespace platform
