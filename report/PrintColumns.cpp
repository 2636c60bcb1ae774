#include "report/PrintColumns.h"

#include <algorithm>

namespace PrintColumns {

namespace {
constexpr float lineSpacing = 1.25F;
constexpr int largestText_pt = 10;
constexpr int smallestText_pt = 5;
} // namespace

float FittingSize(platform::Printer& printer, int columns) {
    int size = largestText_pt;
    for (; size > smallestText_pt; --size) {
        printer.SetFont({static_cast<float>(size)});
        if (X(printer, columns) <= printer.PageWidth())
            break;
    }
    return static_cast<float>(size);
}

float X(const platform::Printer& printer, int column) {
    return static_cast<float>(column) * printer.TextWidth("0");
}

std::size_t Fitting(const platform::Printer& printer, float width) {
    return static_cast<std::size_t>(std::max(width / printer.TextWidth("0"), 0.0F));
}

std::vector<std::string> Wrap(std::string_view text, std::size_t width) {
    std::vector<std::string> pieces;
    while (text.size() > width) {
        const std::size_t blank = text.rfind(' ', width);
        const bool atBlank = blank != std::string_view::npos && blank > 0;
        pieces.emplace_back(text.substr(0, atBlank ? blank : width));
        text.remove_prefix(atBlank ? blank + 1 : width);
    }
    pieces.emplace_back(text);
    return pieces;
}

float LineHeight(const platform::Printer& printer) {
    return lineSpacing * printer.TextHeight("ABCD");
}

void PrintAt(platform::Printer& printer, platform::PrintPosition position, std::string_view text) {
    printer.SetCurrentPosition(position);
    printer.PrintText(text);
}

} // namespace PrintColumns
