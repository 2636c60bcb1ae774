#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The core's promise, checked on its files: it includes no Qt and no screen, and its folders
/// include each other in one direction only.
namespace architecture {

/// One line for each include that the promise forbids: "file:line: reason". Empty when all is well.
/// `root` is the top folder of the project. Throws std::runtime_error when a folder is missing.
std::vector<std::string> ForbiddenIncludes(const std::filesystem::path& root);

} // namespace architecture
