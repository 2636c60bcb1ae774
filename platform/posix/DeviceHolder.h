#pragma once

#include <string>

namespace platform {

/// Who holds a device that is in use, as far as this user may know: "vantrel (process 1234)";
/// empty otherwise.
std::string HolderOfDevice(const std::string& device);

} // namespace platform
