#pragma once

#include "platform/Printer.h"
#include "report/PrintLayout.h"
#include "report/PrintRange.h"

#include <functional>
#include <string>

/// Printing what a report viewer holds.
namespace Mreport {

struct ViewedFile;

/// Numbers of the first and last record of a list page; 0 and 0 for a page without records.
RecordRange RecordsOfPage(const ViewedFile& file, int page);

/// Title of the printed table or graph, by the file's channels and project.
std::string ReportTitle(const ViewedFile& file, PrintKind kind);

/// What is printed of a list page, and how.
struct TableChoices {
    bool compact = false;      ///< one line a record
    bool wholeRecords = false; ///< no record is cut by the end of a page where it fits the next
    bool firstPage = false; ///< a page with the file's header and a line to sign before the table
};

/// Prints records of a list page as a table, with a preview. `progress` as for PrintTable. Throws
/// RunTimeError when it could not be printed.
platform::PrintOutcome PrintPageTable(const ViewedFile& file, int page, RecordRange range,
                                      TableChoices choices,
                                      const std::function<void(const TableProgress&)>& progress);

/// Prints a graph across the paper's width, with a preview. Throws RunTimeError when it could not
/// be printed.
platform::PrintOutcome PrintGraph(const ViewedFile& file, const platform::Picture& graph);

} // namespace Mreport
