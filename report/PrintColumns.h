#pragma once

#include "platform/Printer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Places on a printed page counted in characters and lines of the printer's font.
namespace PrintColumns {

/// The largest whole size, from 10 pt down to 5 pt, in which `columns` characters fit the page's
/// width; the smallest where none does.
float FittingSize(platform::Printer& printer, int columns);

/// Column 0 is the left edge.
float X(const platform::Printer& printer, int column);

/// Characters that fit this width.
std::size_t Fitting(const platform::Printer& printer, float width);

/// Pieces of at most `width` characters, broken at blanks where there are any.
std::vector<std::string> Wrap(std::string_view text, std::size_t width);

/// Distance of two lines of text.
float LineHeight(const platform::Printer& printer);

void PrintAt(platform::Printer& printer, platform::PrintPosition position, std::string_view text);

} // namespace PrintColumns
