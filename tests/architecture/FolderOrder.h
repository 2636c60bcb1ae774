#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The order of the house, checked on its files: a folder includes only folders below it, and the
/// core includes no Qt.
namespace architecture {

/// One line for each include that the order forbids: "file:line: reason". Empty when all is well.
/// `root` is the top folder of the project. Throws std::runtime_error when a folder is missing.
std::vector<std::string> ForbiddenIncludes(const std::filesystem::path& root);

} // namespace architecture
