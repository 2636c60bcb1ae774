#include "report/PrintColumns.h"

#include <algorithm>

namespace PrintColumns {

namespace {
constexpr float lineSpacing = 1.25F;
}

float FittingSize(platform::Printer& printer, int columns, int largest_pt, int smallest_pt) {
    int size = largest_pt;
    for (; size > smallest_pt; --size) {
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

float LineHeight(const platform::Printer& printer) {
    return lineSpacing * printer.TextHeight("ABCD");
}

void PrintAt(platform::Printer& printer, platform::PrintPosition position, std::string_view text) {
    printer.SetCurrentPosition(position);
    printer.PrintText(text);
}

} // namespace PrintColumns
