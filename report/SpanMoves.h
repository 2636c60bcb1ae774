#pragma once

#include "report/RunOverview.h"

/// How a span is moved through a run, and made longer or shorter.
namespace Mreport::SpanMoves {

inline constexpr std::int64_t shortest = 2; ///< records, where the run has as many

/// The span moved, and shortened where it must be, into a run of so many records.
RecordSpan Within(const RecordSpan& span, std::int64_t records);

/// So many records further on.
RecordSpan Moved(const RecordSpan& span, std::int64_t records);

/// Longer for a factor above 1, shorter below; the record at this share of it (0 to 1) stays where
/// it is. A span changes by one record at least.
RecordSpan Zoomed(const RecordSpan& span, double factor, double share);

/// With another begin or another end, not behind one another.
RecordSpan WithBegin(const RecordSpan& span, std::int64_t first);
RecordSpan WithEnd(const RecordSpan& span, std::int64_t end);

/// As long, with the record in its middle.
RecordSpan Around(const RecordSpan& span, std::int64_t place);

} // namespace Mreport::SpanMoves
