#include "simulator/PortLink.h"

#include "base/PortName.h"
#include "base/RunTimeError.h"

#include <cstdlib>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace simulator {

namespace {

bool LeftBehind(const std::filesystem::path& link) {
    std::error_code ignored;
    const std::filesystem::path target = std::filesystem::read_symlink(link, ignored);
    return target.native().starts_with("/dev/pts/") || !std::filesystem::exists(link, ignored);
}

} // namespace

std::filesystem::path ConfigurationFolder() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured != nullptr && std::filesystem::path(configured).is_absolute())
        return std::filesystem::path(configured) / "Vantrel";
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        throw RunTimeError("No configuration folder: neither XDG_CONFIG_HOME nor HOME is set");
    return std::filesystem::path(home) / ".config" / "Vantrel";
}

std::filesystem::path LinkOfPort(int number) {
    return PortName::LinkIn(ConfigurationFolder(), number);
}

PortLink::PortLink(std::filesystem::path link, const std::string& device)
    : link_(std::move(link)), device_(device) {
    std::error_code error;
    if (link_.has_parent_path())
        std::filesystem::create_directories(link_.parent_path(), error);
    const std::filesystem::file_status status = std::filesystem::symlink_status(link_, error);
    if (std::filesystem::exists(status)) {
        if (!std::filesystem::is_symlink(status))
            throw RunTimeError("Linking " + link_.string() + ": there is a file of that name");
        if (!LeftBehind(link_))
            throw RunTimeError("Linking " + link_.string() + ": it is a link to " +
                               std::filesystem::read_symlink(link_).string() +
                               " already; remove it or choose another port");
    }
    // Made beside and renamed, so that a program that looks meanwhile finds the old or the new.
    const std::filesystem::path beside = link_.string() + "." + std::to_string(::getpid());
    error.clear();
    std::filesystem::create_symlink(device_, beside, error);
    if (!error)
        std::filesystem::rename(beside, link_, error);
    if (error)
        throw RunTimeError("Linking " + link_.string() + ": " + error.message());
}

PortLink::~PortLink() {
    std::error_code ignored;
    if (std::filesystem::read_symlink(link_, ignored) == device_)
        std::filesystem::remove(link_, ignored);
}

} // namespace simulator
