#pragma once

#include "platform/Printer.h"

#include <cstddef>
#include <string_view>

/// Places on a printed page counted in characters and lines of the printer's font.
namespace PrintColumns {

/// The largest whole size, from `largest_pt` down to `smallest_pt`, in which `columns` characters
/// fit the page's width; the smallest where none does.
float FittingSize(platform::Printer& printer, int columns, int largest_pt, int smallest_pt);

/// Column 0 is the left edge.
float X(const platform::Printer& printer, int column);

/// Characters that fit this width.
std::size_t Fitting(const platform::Printer& printer, float width);

/// Distance of two lines of text.
float LineHeight(const platform::Printer& printer);

void PrintAt(platform::Printer& printer, platform::PrintPosition position, std::string_view text);

} // namespace PrintColumns
