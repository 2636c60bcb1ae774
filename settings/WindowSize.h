#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mWinInit {

/// Of the data acquisition screen, in the desktop's pixels.
struct WindowSize {
    int width = 0;
    int height = 0;

    bool operator==(const WindowSize&) const = default;
};

/// The remembered size, from a section of its own of the settings file; nothing before one was
/// remembered, or where what is there is no size.
std::optional<WindowSize> LoadWindowSize();

/// Returns messages as SaveSettings does.
std::vector<std::string> SaveWindowSize(const WindowSize& size);

} // namespace mWinInit
