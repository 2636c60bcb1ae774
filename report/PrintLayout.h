#pragma once

#include "platform/Printer.h"
#include "report/PageText.h"
#include "report/PrintRange.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// A report on paper.
namespace Mreport {

enum class PrintKind { table, graph };

/// "4-Channel Vantrel - " or "8-Channel Vantrel - ", the name ("Noname" where it is empty) and
/// " Report: Table" or " Report: Graphic".
std::string PrintTitle(int channelCount, std::string_view name, PrintKind kind);

/// What the title of a table tells.
struct TableTitle {
    int channelCount = 4; ///< 4 or 8
    std::string name;     ///< of the project
};

/// The title of a table, no wider than this in the printer's font: a long name loses its end.
std::string FittingTitle(const platform::Printer& printer, const TableTitle& title, float width);

/// What a table is printed from.
struct TableReport {
    const PageText& page;
    std::int32_t firstRecordOfPage = 1;
    std::int32_t linesPerRecord = 1; ///< its separator included
    int channelCount = 4;            ///< 4 or 8
    std::string name;                ///< of the project
    std::string date;                ///< of printing, "dd-mmm-yyyy"
    bool wholeRecords = false;       ///< a page ends before a record that fits the next one alone
};

struct TableProgress {
    std::size_t linesPrinted = 0;
    std::size_t linesTotal = 0;
    int page = 1;
};

/// The lines of the page that a range of records covers, the second one not included.
struct LineRange {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// From the first record of the range that the page holds to the line before the first record
/// behind it. Throws RunTimeError when the page holds no record of the range.
LineRange FindPrintedLines(const TableReport& report, RecordRange range);

/// Prints the records of the range, page after page, letting events run at each line. Ends early
/// when the printer asks to stop. `progress` is called after each line.
void PrintTable(platform::Printer& printer, const TableReport& report, RecordRange range,
                const std::function<void(const TableProgress&)>& progress);

} // namespace Mreport
