#include "CoreIncludes.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace architecture {

namespace {

namespace fs = std::filesystem;

/// A folder includes itself and those before it.
constexpr std::array<std::string_view, 6> order = {"app",  "chem",  "settings",
                                                   "link", "files", "report"};
constexpr std::string_view seam = "platform";
constexpr std::array<std::string_view, 2> systemParts = {"platform/posix", "platform/win32"};

/// What stands between the quotes or brackets of an include line, the opening one in front.
std::optional<std::string> IncludedName(const std::string& line) {
    const auto hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line[hash] != '#')
        return std::nullopt;
    const auto word = line.find_first_not_of(" \t", hash + 1);
    constexpr std::string_view include = "include";
    if (word == std::string::npos || line.compare(word, include.size(), include) != 0)
        return std::nullopt;
    const auto open = line.find_first_of("\"<", word);
    if (open == std::string::npos)
        return std::nullopt;
    return line.substr(open, line.find_first_of("\">", open + 1) - open);
}

bool IsQt(std::string_view name) {
    return name.starts_with("<Q") || name.starts_with("\"Q") || name.find("ui_") == 1;
}

bool StartsWithFolder(std::string_view name, std::string_view folder) {
    return name.size() > folder.size() && name.starts_with(folder) && name[folder.size()] == '/';
}

std::optional<std::size_t> PlaceInOrder(std::string_view name) {
    for (std::size_t i = 0; i < order.size(); ++i)
        if (StartsWithFolder(name, order[i]))
            return i;
    return std::nullopt;
}

/// Why a file in `folder` may not include `name`; empty where it may.
std::string Reason(std::string_view folder, std::string_view name) {
    if (IsQt(name))
        return "includes Qt";
    if (name.front() == '<')
        return {};
    name.remove_prefix(1);
    for (const std::string_view above : {"screens", "platform/qt", "app/program", "simulator"})
        if (StartsWithFolder(name, above))
            return "includes " + std::string(above);
    const bool systemPart = std::ranges::find(systemParts, folder) != systemParts.end();
    for (const std::string_view part : systemParts)
        if (StartsWithFolder(name, part) && !systemPart)
            return "includes the system's part of the seam instead of its interface";
    const auto place = PlaceInOrder(name);
    if (!place)
        return {};
    if (systemPart || folder == seam) // below the core, but for the error type and the code page
        return *place > 0 ? "includes " + std::string(order[*place]) + " from below the core" : "";
    const auto own = PlaceInOrder(std::string(folder) + "/");
    if (own && *place > *own)
        return "includes " + std::string(order[*place]) + ", which stands above it";
    return {};
}

void CheckFile(const fs::path& root, const fs::path& file, std::string_view folder,
               std::vector<std::string>& found) {
    std::ifstream stream(file);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const auto name = IncludedName(line);
        const std::string reason = name ? Reason(folder, *name) : std::string();
        if (!reason.empty())
            found.push_back(file.lexically_relative(root).generic_string() + ":" +
                            std::to_string(number) + ": " + reason);
    }
}

/// Subfolders belong to their folder, but for those that are a part of their own.
bool IsPartOfItsOwn(const fs::path& folder) {
    return folder == "app/program" || folder.parent_path() == seam;
}

void CheckFolder(const fs::path& root, std::string_view folder, std::vector<std::string>& found) {
    if (!fs::is_directory(root / folder))
        throw std::runtime_error("no folder " + (root / folder).string());
    for (auto entry = fs::recursive_directory_iterator(root / folder);
         entry != fs::recursive_directory_iterator(); ++entry) {
        const auto extension = entry->path().extension();
        if (entry->is_directory() && IsPartOfItsOwn(entry->path().lexically_relative(root)))
            entry.disable_recursion_pending();
        else if (extension == ".h" || extension == ".cpp")
            CheckFile(root, entry->path(), folder, found);
    }
}

} // namespace

std::vector<std::string> ForbiddenIncludes(const fs::path& root) {
    std::vector<std::string> found;
    for (const auto folder : order)
        CheckFolder(root, folder, found);
    CheckFolder(root, seam, found);
    for (const auto folder : systemParts)
        CheckFolder(root, folder, found);
    std::ranges::sort(found);
    return found;
}

} // namespace architecture
