#pragma once

#include "platform/Printer.h"
#include "report/PrintLayout.h"
#include "report/RecordTable.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Mreport {

/// What a compact table is printed from.
struct CompactReport {
    RecordTable& records;
    std::int64_t firstRow = 0;
    std::int64_t endRow = 0; ///< behind the last one
    TableTitle title;
    std::string date; ///< of printing
};

/// Prints one line a record: number, time, and the values by column, in a second line those for
/// which the paper is too narrow; a comment stands below its record. Lets events run at each record
/// and ends early when the printer asks to stop.
void PrintCompactTable(platform::Printer& printer, const CompactReport& report,
                       const std::function<void(const TableProgress&)>& progress);

/// The columns of values in groups that fit beside number and time in so many characters; at least
/// one in each.
std::vector<std::vector<std::size_t>> ColumnGroups(const std::vector<RecordTable::Column>& columns,
                                                   int characters);

} // namespace Mreport
