#pragma once

#include "report/Seal.h"
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

/// A file held against a seal, wherever that was kept.
SealFound HeldAgainst(const Mreport::Seal& seal, const Mreport::ViewedFile& viewed);

} // namespace tools
