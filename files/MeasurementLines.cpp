#include "files/MeasurementLines.h"

#include <limits>

namespace MeasurementLines {

namespace {

std::string_view WithoutTrailingBlanks(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

} // namespace

std::int32_t RecordNumber(std::string_view line) {
    if (!IsRecordStart(line))
        return 0;
    std::int64_t number = 0;
    for (const char letter : line.substr(MeasurementTexts::record.size())) {
        if (letter < '0' || letter > '9')
            break;
        number = number * 10 + (letter - '0');
        if (number > std::numeric_limits<std::int32_t>::max())
            return 0;
    }
    return static_cast<std::int32_t>(number);
}

std::string_view TimeStamp(std::string_view line) {
    for (int tabs = 0; tabs < 2; ++tabs) {
        const auto tab = line.find('\t');
        if (tab == std::string_view::npos)
            return {};
        line.remove_prefix(tab + 1);
    }
    return line;
}

std::string_view CommentText(std::string_view line) {
    if (!IsComment(line))
        return {};
    line.remove_prefix(MeasurementTexts::comment.size());
    if (line.starts_with('\t'))
        line.remove_prefix(1);
    return line;
}

std::string_view Label(std::string_view line) {
    return WithoutTrailingBlanks(line.substr(0, line.find('\t')));
}

std::optional<Quantity> QuantityOf(std::string_view line) {
    return Quantities::WithLabel(Label(line));
}

Cells SplitCells(std::string_view line) {
    Cells cells;
    auto tab = line.find('\t');
    while (tab != std::string_view::npos && cells.count < maxChannels) {
        line.remove_prefix(tab + 1);
        tab = line.find('\t');
        cells.cell[cells.count++] = line.substr(0, tab);
    }
    return cells;
}

bool TakeLine(std::string_view& text, std::string_view& line) {
    if (text.empty())
        return false;
    const auto end = text.find('\n');
    line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return true;
}

} // namespace MeasurementLines
