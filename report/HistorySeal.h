#pragma once

#include "history/Store.h"
#include "report/Seal.h"

#include <filesystem>
#include <optional>

namespace Mreport {

/// What the installed history has taken of a measurement file whenever records reached it, as a
/// seal of the last time; nothing where it knows nothing of the file. Throws RunTimeError where the
/// history cannot be read.
std::optional<Seal> SealFromHistory(const std::filesystem::path& file);

/// The same of a history that is not installed.
std::optional<Seal> SealFromHistory(const History::Store& history,
                                    const std::filesystem::path& file);

} // namespace Mreport
