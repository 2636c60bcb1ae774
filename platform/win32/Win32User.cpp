#include "base/CodePage.h"
#include "platform/System.h"

#include <windows.h>

#include <array>

namespace platform {

std::string UserName() {
    constexpr std::size_t longestName = 257; // UNLEN of the system's documentation, and its end
    std::array<wchar_t, longestName> name{};
    auto length = static_cast<DWORD>(name.size());
    if (::GetUserNameW(name.data(), &length) == 0)
        return {};
    return CodePage::NameOf(std::wstring(name.data()));
}

std::filesystem::path UserDataFolder() {
    return {};
}

} // namespace platform
