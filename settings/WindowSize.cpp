#include "settings/WindowSize.h"

#include "platform/Platform.h"
#include "settings/StoredLines.h"

namespace mWinInit {

namespace {

const std::string section = "Window Size";
const std::string widthKey = "Width";
const std::string heightKey = "Height";

} // namespace

std::optional<WindowSize> LoadWindowSize() {
    const auto& profile = platform::Current().profile;
    const WindowSize size{profile.GetInt(section, widthKey, 0),
                          profile.GetInt(section, heightKey, 0)};
    return size.width > 0 && size.height > 0 ? std::optional(size) : std::nullopt;
}

std::vector<std::string> SaveWindowSize(const WindowSize& size) {
    LineWriter writer;
    writer.WriteNumber(section, widthKey, size.width);
    writer.WriteNumber(section, heightKey, size.height);
    return writer.TakeMessages();
}

} // namespace mWinInit
