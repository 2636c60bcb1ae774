#include "settings/WindowSize.h"

#include "platform/Platform.h"
#include "settings/StoredLines.h"

namespace mWinInit {

namespace {

const std::string windowSection = "Window Size";
const std::string widthKey = "Width";
const std::string heightKey = "Height";

} // namespace

std::optional<WindowSize> LoadWindowSize() {
    const auto& profile = platform::Current().profile;
    const WindowSize size{profile.GetInt(windowSection, widthKey, 0),
                          profile.GetInt(windowSection, heightKey, 0)};
    return size.width > 0 && size.height > 0 ? std::optional(size) : std::nullopt;
}

std::vector<std::string> SaveWindowSize(const WindowSize& size) {
    LineWriter writer;
    writer.WriteNumber(windowSection, widthKey, size.width);
    writer.WriteNumber(windowSection, heightKey, size.height);
    return writer.TakeMessages();
}

} // namespace mWinInit
