#pragma once

#include <cstddef>
#include <filesystem>

/// How many files, folders included, lie in a folder.
inline std::size_t FilesIn(const std::filesystem::path& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator(folder))
        ++count;
    return count;
}
