#pragma once

#include "report/GraphSpan.h"
#include "report/ReportGraph.h"

namespace Mreport {

/// Clears the live graph at the start of a block of 50 records.
void DynResetGraph(ReportGraph& graph, FileRecord record);

/// Adds the newest record of the graph's page, which the list has just caught up with, to the live
/// graph: it becomes the next point of its block of 50. Returns what the graph then shows. The
/// caller resets the scroll bar and asks PageIsFull.
DrawnSpan DynUpdate(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown,
                    FileRecord record);

/// True when the newest page has come within 10 lines of its end.
bool PageIsFull(const ReportPages& pages);

} // namespace Mreport
