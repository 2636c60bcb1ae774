#pragma once

#include "simulator/Quantities.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// What the program was started with.
struct Options {
    enum class Task { run, showHelp, showVersion, send };
    Task task = Task::run;
    int comPort = 1;
    std::optional<std::filesystem::path> link;
    std::optional<std::string> device;
    std::optional<std::filesystem::path> control;
    bool withControl = true;
    bool attached = false;                    ///< it ends with its standard input
    std::optional<std::filesystem::path> log; ///< receives what goes out onto the line
    std::optional<std::uint32_t> bitRate;
    bool fast = false;
    bool ideal = false;
    std::uint64_t seed = 1;
    std::vector<std::string> commands; ///< carried out before the start, in order
    std::string commandToSend;         ///< for a running instrument
};

/// Reads the arguments behind the program's name. Throws RunTimeError with a message for people.
Options ParseOptions(std::span<const std::string_view> arguments);

std::string OptionHelp();

} // namespace simulator
