#pragma once

#include "report/ViewedFile.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tools {

/// What the seal beside a file says of it.
struct SealFound {
    bool changed = false;
    std::string text;
};

/// Nothing where no seal stands beside the file. Throws RunTimeError for one that cannot be read.
std::optional<SealFound> CheckSeal(const std::filesystem::path& file,
                                   const Mreport::ViewedFile& viewed);

} // namespace tools
