#pragma once

#include <filesystem>
#include <vector>

/// The files that were viewed last, newest first, kept in the per-user store.
namespace RecentFiles {

inline constexpr std::size_t count = 6;

std::vector<std::filesystem::path> List();

/// Puts the file to the front. One whose name the store cannot hold is left out.
void Add(const std::filesystem::path& file);

/// Takes a file out that is no longer there.
void Remove(const std::filesystem::path& file);

} // namespace RecentFiles
