#include "FolderOrder.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>

namespace architecture {

namespace {

namespace fs = std::filesystem;

/// What stands together on one floor: a folder and what lies in it, but for the folders that have
/// a floor of their own.
struct Floor {
    std::string_view folder;
    bool qt = false; ///< it may include Qt
};

/// From the ground up. A floor includes itself and those before it.
constexpr std::array<Floor, 29> house = {{
    {"base"},
    {"platform"},
    {"platform/posix"},
    {"platform/win32"},
    {"app"},
    {"chem"},
    {"settings"},
    {"link"},
    {"history"},
    {"files"},
    {"report"},
    {"platform/qt", true},
    {"screens/controls", true},
    {"screens/calibration", true},
    {"screens/frmSplash", true},
    {"screens/frmSimulated", true},
    {"screens/frmPortSettings", true},
    {"screens/frmCommon", true},
    {"screens/frmSrch", true},
    {"screens/frmPrint", true},
    {"screens/frmLimits", true},
    {"screens/frmVerify", true},
    {"screens/frmHistory", true},
    {"screens/frmCheck", true},
    {"screens/Report", true},
    {"screens/frmCalib", true},
    {"screens/SimultCalib", true},
    {"screens/frmMain", true},
    {"program", true},
}};

/// The simulated instrument stands beside the house and shares its ground alone.
constexpr std::array<Floor, 2> outbuilding = {{{"base"}, {"simulator"}}};

/// The program for measurement files stands on the core, without Qt and screens.
constexpr std::array<Floor, 10> annex = {{{"base"},
                                          {"platform"},
                                          {"app"},
                                          {"chem"},
                                          {"settings"},
                                          {"link"},
                                          {"history"},
                                          {"files"},
                                          {"report"},
                                          {"tools"}}};

/// The system's parts of the seam, which nobody includes but themselves.
constexpr std::array<std::string_view, 2> systemParts = {"platform/posix", "platform/win32"};

/// What the Qt side of the seam knows of the house: the interfaces and the ground.
constexpr std::array<std::string_view, 3> belowTheSeam = {"base", "platform", "platform/qt"};

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

bool LiesIn(std::string_view file, std::string_view folder) {
    return file.size() > folder.size() && file.starts_with(folder) && file[folder.size()] == '/';
}

bool Holds(std::span<const std::string_view> folders, std::string_view folder) {
    return std::ranges::find(folders, folder) != folders.end();
}

/// The folder of any floor that a file lies in, the innermost one; empty for a file of none.
std::string_view FolderOf(std::string_view file) {
    std::string_view found;
    const auto look = [&](const Floor& floor) {
        if (LiesIn(file, floor.folder) && floor.folder.size() > found.size())
            found = floor.folder;
    };
    std::ranges::for_each(house, look);
    std::ranges::for_each(outbuilding, look);
    std::ranges::for_each(annex, look);
    return found;
}

std::optional<std::size_t> PlaceOf(std::span<const Floor> floors, std::string_view folder) {
    const auto found = std::ranges::find(floors, folder, &Floor::folder);
    if (found == floors.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - floors.begin());
}

/// Why a file of a floor may not include a file of `folder`; empty where it may.
std::string Reason(std::span<const Floor> floors, const Floor& own, std::string_view folder) {
    const auto refused = [&](const char* why) { return "includes " + std::string(folder) + why; };
    const auto place = PlaceOf(floors, folder);
    if (!place)
        return refused(", which is no part of its building");
    if (*place > *PlaceOf(floors, own.folder))
        return refused(", which stands above it");
    if (Holds(systemParts, folder) && folder != own.folder)
        return refused(" instead of the seam's interface");
    if (own.folder.starts_with("platform/") && folder != own.folder && !Holds(belowTheSeam, folder))
        return refused(" from below the seam");
    return {};
}

std::string Reason(std::span<const Floor> floors, const Floor& own, const std::string& name) {
    if (IsQt(name))
        return own.qt ? "" : "includes Qt";
    const std::string_view folder = FolderOf(std::string_view(name).substr(1));
    if (name.front() == '<' || folder.empty())
        return {};
    return Reason(floors, own, folder);
}

void CheckFile(std::span<const Floor> floors, const Floor& own, const fs::path& root,
               const fs::path& file, std::vector<std::string>& found) {
    std::ifstream stream(root / file);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const auto name = IncludedName(line);
        const std::string reason = name ? Reason(floors, own, *name) : std::string();
        if (!reason.empty())
            found.push_back(file.generic_string() + ":" + std::to_string(number) + ": " + reason);
    }
}

void CheckFloor(std::span<const Floor> floors, const Floor& own, const fs::path& root,
                std::vector<std::string>& found) {
    if (!fs::is_directory(root / own.folder))
        throw std::runtime_error("no folder " + (root / own.folder).string());
    for (const auto& entry : fs::recursive_directory_iterator(root / own.folder)) {
        const fs::path file = entry.path().lexically_relative(root);
        const auto extension = file.extension();
        if ((extension == ".h" || extension == ".cpp") &&
            FolderOf(file.generic_string()) == own.folder)
            CheckFile(floors, own, root, file, found);
    }
}

} // namespace

std::vector<std::string> ForbiddenIncludes(const fs::path& root) {
    std::vector<std::string> found;
    for (const Floor& floor : house)
        CheckFloor(house, floor, root, found);
    CheckFloor(outbuilding, outbuilding.back(), root, found);
    CheckFloor(annex, annex.back(), root, found);
    std::ranges::sort(found);
    return found;
}

} // namespace architecture
