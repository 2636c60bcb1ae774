#pragma once

#include "tools/Json.h"
#include "tools/Options.h"

#include <filesystem>

namespace tools {

/// Exit codes of the program.
inline constexpr int fine = 0;
inline constexpr int notFine = 1; ///< values diverge, or a file is damaged or cannot be read
inline constexpr int wrongUse = 2;

/// A command on one file: writes what it found to standard output or, with --json, into `answers`.
/// Returns an exit code; throws RunTimeError where the file cannot be worked on.
int Info(const Options& options, const std::filesystem::path& file, JsonArray& answers);
int Csv(const Options& options, const std::filesystem::path& file, JsonArray& answers);
int Verify(const Options& options, const std::filesystem::path& file, JsonArray& answers);
int MakeSeal(const Options& options, const std::filesystem::path& file, JsonArray& answers);
int Recover(const Options& options, const std::filesystem::path& file, JsonArray& answers);

} // namespace tools
