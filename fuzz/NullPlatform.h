#pragma once

#include "platform/Platform.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace fuzz {

/// The platform of the fuzz targets: nobody answers its boxes, its clock stands still but for a
/// millisecond a look, and its files are the system's own in a folder of this process. One object
/// with static storage duration installs it for the whole run.
class NullPlatform {
public:
    NullPlatform();
    ~NullPlatform();
    NullPlatform(const NullPlatform&) = delete;
    NullPlatform& operator=(const NullPlatform&) = delete;

    /// Runs while a message box is open, before its answer.
    std::function<void()> whileMessageIsOpen;

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path SettingsFile() const;

    /// A file of these bytes in the platform's folder.
    std::filesystem::path MakeFile(const std::string& name, std::string_view bytes) const;

private:
    struct Parts;
    std::filesystem::path folder_;
    std::unique_ptr<Parts> parts_;
};

/// The input as text.
inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the run, as a finding, when a property does not hold.
void Require(bool holds);

} // namespace fuzz
