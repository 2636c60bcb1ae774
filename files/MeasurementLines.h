#pragma once

#include "files/MeasurementRecord.h"
#include "files/MeasurementTexts.h"

#include <optional>
#include <string_view>

/// What the lines of a measurement file are. Every reader goes by these tests, so that a comment or
/// a project name that holds "Record", "mV" or "----" is taken for nothing but text. Lines come
/// without their line end.
namespace MeasurementLines {

// The tests that each line of or cell of a file goes through stand here, for they must cost next to
// nothing: a file of a week has millions of lines.

/// The first line of a record: "Record " and a digit.
inline bool IsRecordStart(std::string_view line) {
    constexpr std::string_view mark = MeasurementTexts::record;
    return line.size() > mark.size() && line.starts_with(mark) && line[mark.size()] >= '0' &&
           line[mark.size()] <= '9';
}

/// The number of a record's first line; 0 when it has none that fits.
std::int32_t RecordNumber(std::string_view line);

/// What stands behind the second tab of a record's first line.
std::string_view TimeStamp(std::string_view line);

/// A trimmed cell without a value: blank, "NA" or "N/A".
inline bool IsMissing(std::string_view cell) {
    return cell.empty() ||
           (cell.front() == MeasurementTexts::noRecordValue.front() &&
            (cell == MeasurementTexts::noRecordValue || cell == MeasurementTexts::noHeaderValue));
}

/// A cell without the blanks that pad it to the width of its column: most of them go at once.
inline std::string_view WithoutPadding(std::string_view cell) {
    constexpr std::string_view blanks = "        ";
    while (cell.ends_with(blanks))
        cell.remove_suffix(blanks.size());
    while (cell.ends_with(' '))
        cell.remove_suffix(1);
    return cell;
}

/// The second line of a record.
inline bool IsComment(std::string_view line) {
    return line.starts_with(MeasurementTexts::comment);
}
std::string_view CommentText(std::string_view line);

/// A line of dashes alone, which ends a header block or a record.
inline bool IsSeparator(std::string_view line) {
    // A line that equals itself one place on is all of one character; every eighth line of a file
    // is a separator, and comparing is much faster than looking at each character.
    constexpr std::size_t shortestSeparator = 6;
    return line.size() >= shortestSeparator && line.front() == '-' &&
           line.substr(1) == line.substr(0, line.size() - 1);
}

/// The quantity of a record's row of values, by its label column.
std::optional<Quantity> QuantityOf(std::string_view line);

/// The label column without its trailing blanks; the whole line where it has no tab.
std::string_view Label(std::string_view line);

/// Cells behind the label column, untrimmed; at most eight.
struct Cells {
    std::array<std::string_view, maxChannels> cell;
    std::size_t count = 0;

    /// The cell of a channel by its number, from 1; nothing where the row ends before it.
    std::optional<std::string_view> OfChannel(int number) const {
        const auto index = static_cast<std::size_t>(number - 1);
        return index < count ? std::optional(cell[index]) : std::nullopt;
    }
};
Cells SplitCells(std::string_view line);

/// A line as a file has it without its CR LF or LF.
inline std::string_view WithoutLineEnd(std::string_view line) {
    if (line.ends_with('\n'))
        line.remove_suffix(1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

/// Takes the first line, without its CR LF or LF, off the text. False at the end.
bool TakeLine(std::string_view& text, std::string_view& line);

} // namespace MeasurementLines
