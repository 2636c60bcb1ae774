#include "platform/System.h"

#include <windows.h>

#include <array>

namespace platform {

std::string DeviceOfPort(int number, const std::filesystem::path& /*configurationFolder*/) {
    constexpr int lastPort = 16;
    if (number < 1 || number > lastPort)
        return {};
    return R"(\\.\COM)" + std::to_string(number);
}

std::filesystem::path SystemTemporaryFolder() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    const DWORD length = ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return std::wstring(folder.data(), length);
}

} // namespace platform
