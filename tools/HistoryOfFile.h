#pragma once

#include "history/Log.h"
#include "tools/Options.h"
#include "tools/SealFile.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tools {

/// What the history knows of a measurement file: the one named, else that of the user's program.
/// Nothing where there is none, or where it does not know the file. One that cannot be read says
/// why, and has found no change.
std::optional<SealFound> CheckHistory(const Options& options, const std::filesystem::path& file,
                                      const Mreport::ViewedFile& viewed);

/// The same history, installed to take down what is done to files; nothing where there is none.
/// What it has to tell goes to standard error.
std::unique_ptr<History::Log> InstallHistory(const Options& options);

} // namespace tools
