#pragma once

#include "platform/UserStore.h"

namespace platform {

/// A settings file (on Windows the registry) of the same application, section and keys.
class QtUserStore : public UserStore {
public:
    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) const override;
    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override;
};

} // namespace platform
