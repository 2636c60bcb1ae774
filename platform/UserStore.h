#pragma once

#include <string>

namespace platform {

/// The per-user settings of the operating system, apart from the settings file.
class UserStore {
public:
    virtual ~UserStore() = default;

    virtual std::string GetSetting(const std::string& application, const std::string& section,
                                   const std::string& key, const std::string& fallback) const = 0;

    /// Throws RunTimeError when the store cannot be written.
    virtual void SaveSetting(const std::string& application, const std::string& section,
                             const std::string& key, const std::string& value) = 0;
};

} // namespace platform
