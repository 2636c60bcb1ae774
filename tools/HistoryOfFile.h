#pragma once

#include "tools/Options.h"
#include "tools/SealFile.h"

#include <filesystem>
#include <optional>

namespace tools {

/// What the history knows of a measurement file: the one named, else that of the user's program.
/// Nothing where there is none, or where it does not know the file. One that cannot be read says
/// why, and has found no change.
std::optional<SealFound> CheckHistory(const Options& options, const std::filesystem::path& file,
                                      const Mreport::ViewedFile& viewed);

} // namespace tools
