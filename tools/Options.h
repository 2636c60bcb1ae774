#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// What the program was started with.
struct Options {
    enum class Task { info, csv, verify, seal, recover, showHelp, showVersion };

    Task task = Task::showHelp;
    std::vector<std::filesystem::path> files;
    bool json = false;
    std::optional<std::string> output;               ///< of csv; "-" is standard output
    bool spreadsheet = false;                        ///< csv begins with a byte order mark
    std::optional<std::filesystem::path> recordings; ///< where recover looks for them
    std::optional<std::filesystem::path> history; ///< of verify and recover, if not the user's own
    bool force = false;                           ///< csv and seal may replace a file
};

/// Reads the arguments behind the program's name. Throws RunTimeError with a message for people.
Options ParseOptions(std::span<const std::string_view> arguments);

std::string_view OptionHelp();

} // namespace tools
