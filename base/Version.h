#pragma once

#include <string_view>

namespace theMain {

/// Shown on the splash and in the about box.
inline constexpr std::string_view versionText = "Version 6.4.44sa";

} // namespace theMain
