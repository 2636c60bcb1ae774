#pragma once

#include <optional>
#include <string>
#include <vector>

namespace History {

/// A setting with the value that it has, as a reader knows both.
struct Setting {
    std::string name;
    std::optional<int> channel; ///< 0-based
    std::string value;

    bool operator==(const Setting&) const = default;
};
using Settings = std::vector<Setting>;

/// Those of the working records, of the port and of the limits at this moment.
Settings SettingsInForce();

} // namespace History
