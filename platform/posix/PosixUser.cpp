#include "base/CodePage.h"
#include "platform/System.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace platform {

std::string UserName() {
    constexpr std::size_t room = 4096; // of all that the system tells of a user
    std::array<char, room> texts{};
    passwd user{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &user, texts.data(), texts.size(), &found) != 0 || !found)
        return {};
    return CodePage::Legible(user.pw_name);
}

std::filesystem::path UserDataFolder() {
    const auto folderOf = [](const char* variable) {
        const char* value = std::getenv(variable);
        return std::filesystem::path(value == nullptr ? "" : value);
    };
    std::filesystem::path data = folderOf("XDG_DATA_HOME");
    if (!data.is_absolute())
        data = folderOf("HOME") / ".local/share";
    return data / "Vantrel";
}

} // namespace platform
