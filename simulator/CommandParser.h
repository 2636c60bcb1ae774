#pragma once

#include "simulator/Command.h"

#include <string>
#include <string_view>

namespace simulator {

/// Reads one line of text. Names are taken without regard to case; numbers have a point. Throws
/// RunTimeError that says what is wrong and what would be right.
Command ParseCommand(std::string_view line);

/// Every command with its meaning, for people.
std::string CommandHelp();

} // namespace simulator
