#include "platform/posix/DeviceHolder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

/// As the system names a locked file: device numbers in hexadecimal, then the inode.
std::string LockedName(const struct stat& status) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%02x:%02x:%ju", major(status.st_dev),
                  minor(status.st_dev), static_cast<std::uintmax_t>(status.st_ino));
    return text.data();
}

/// The process that has locked the file, as programs of the same habit do; empty where none has.
std::string LockHolder(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0)
        return {};
    const auto name = LockedName(status);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream fields(line);
        std::string number;
        std::string kind;
        std::string habit;
        std::string mode;
        std::string process;
        std::string file;
        fields >> number >> kind >> habit >> mode >> process >> file;
        if (kind == "FLOCK" && file == name)
            return process;
    }
    return {};
}

bool IsProcess(const fs::path& folder) {
    const auto name = folder.filename().string();
    return std::ranges::all_of(name, [](unsigned char c) { return std::isdigit(c) != 0; });
}

/// True when one of the process's open files is the device.
bool HasOpened(const fs::path& process, const fs::path& device) {
    std::error_code error;
    for (const auto& file : fs::directory_iterator(process / "fd", error)) {
        if (fs::read_symlink(file.path(), error) == device && !error)
            return true;
    }
    return false;
}

/// A process of this user that has opened the device; empty where there is none.
std::string OpenHolder(const std::string& device) {
    std::error_code error;
    for (const auto& folder : fs::directory_iterator("/proc", error)) {
        if (IsProcess(folder.path()) && HasOpened(folder.path(), device))
            return folder.path().filename();
    }
    return {};
}

std::string ProgramOf(const std::string& process) {
    std::ifstream file("/proc/" + process + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

} // namespace

std::string HolderOfDevice(const std::string& device) {
    auto process = LockHolder(device);
    if (process.empty())
        process = OpenHolder(device);
    if (process.empty())
        return {};
    const auto program = ProgramOf(process);
    return program.empty() ? "process " + process : program + " (process " + process + ")";
}

} // namespace platform
