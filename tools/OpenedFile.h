#pragma once

#include "report/ViewedFile.h"

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>

namespace tools {

/// More bytes than any file has: work that a window does in slices is done here in one.
inline constexpr std::uint64_t wholeFile = std::numeric_limits<std::int64_t>::max();

/// Loads a measurement file as the viewer does. Throws RunTimeError where it cannot be read, or is
/// no measurement file: it has neither a header nor a record.
void Load(const std::filesystem::path& file, Mreport::ViewedFile& viewed);

/// Windows-1252 as UTF-8.
std::string Utf8(std::string_view text);

/// A path as it was typed.
std::string NameOf(const std::filesystem::path& file);

} // namespace tools
