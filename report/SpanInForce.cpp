#include "report/SpanInForce.h"

#include "report/ShownGraph.h"
#include "report/WholeRun.h"

#include <algorithm>

namespace Mreport {

bool SpanInForce::GraphShows(const RecordSpan& span) {
    graph_ = span;
    if (!chosen_)
        span_ = span;
    return !chosen_;
}

void SpanInForce::BackToGraph() {
    chosen_ = false;
    span_ = graph_;
}

void SpanInForce::Choose(const RecordSpan& span) {
    chosen_ = true;
    span_ = span;
}

std::optional<SpanInForce::OnPage> SpanInForce::PlaceInGraph(const ReportPages& pages) const {
    const auto place = WholeRun::PlaceInLists(pages, span_.first);
    if (!place)
        return std::nullopt;
    const OnPage found{place->page, place->inPage + span_.Count()};
    if (span_ == graph_)
        return found;
    const auto range = pages.Records(place->page);
    const std::int64_t records = range->count;
    const bool numbered = std::int64_t{range->last} - range->first + 1 == records;
    const bool asLong = span_.Count() == std::min<std::int64_t>(records, spanLength);
    return numbered && asLong && found.end <= records ? std::optional(found) : std::nullopt;
}

} // namespace Mreport
