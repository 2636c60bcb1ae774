#pragma once

#include "files/FileOpr.h"
#include "report/GraphSpan.h"
#include "report/ReportGraph.h"

#include <array>
#include <cstdint>

namespace Mreport {

/// Clears the live graph at the start of a block of 50 records.
void DynResetGraph(ReportGraph& graph, std::int32_t record);

/// Adds a record that has just been written to the live graph: recordsInPage follows it, and it
/// becomes the next point of its block of 50. `values` are indexed by channel or, for degrees, by
/// sensor. A channel that the record itself shows as idle has no value. Returns what the graph then
/// shows. The caller resets the scroll bar and asks PageIsFull.
DrawnSpan DynUpdate(ReportGraph& graph, std::int32_t record,
                    const std::array<float, maxChannels>& values);

/// True when the newest page has come within 10 lines of its end.
bool PageIsFull();

/// After the caller has made the new page: graph and lists go on with it behind this record.
void ContinueOnNewPage(std::int32_t record);

} // namespace Mreport
