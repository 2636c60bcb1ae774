#include "base/CodePage.h"
#include "platform/System.h"

#include <array>
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

} // namespace platform
