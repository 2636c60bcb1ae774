#pragma once

#include "base/Channels.h"

#include <array>
#include <optional>
#include <string_view>

namespace Mreport {

/// The value of a cell; nothing for a missing one ("NA", "N/A", blank).
std::optional<double> NumberInCell(std::string_view cell);

/// The values of a line's cells by column, not-a-number where there is none. What `cells` holds
/// begins with the tab behind the label column and ends with the line. The same values as
/// NumberInCell gives cell by cell, several times as fast.
using CellValues = std::array<double, maxChannels>;
CellValues ReadCells(std::string_view cells);

} // namespace Mreport
