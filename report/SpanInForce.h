#pragma once

#include "report/ReportPages.h"
#include "report/RunOverview.h"

#include <optional>

namespace Mreport {

/// The records that a viewer shows: those of the graph of records, or a span of the user's choice.
class SpanInForce {
public:
    const RecordSpan& Span() const { return span_; }

    /// True for a span of the user's choice.
    bool Chosen() const { return chosen_; }

    void Clear() { *this = {}; }

    /// The graph of records shows these from now on. False while a chosen span is in force, which
    /// stays.
    bool GraphShows(const RecordSpan& span);
    void BackToGraph();
    void Choose(const RecordSpan& span);

    /// Where the graph of records could show the span in force: a span as long as its own, within
    /// one page whose record numbers follow one another.
    struct OnPage {
        int page = 0;
        std::int64_t end = 0; ///< the last record's number within the page
    };
    std::optional<OnPage> PlaceInGraph(const ReportPages& pages) const;

private:
    RecordSpan graph_;
    RecordSpan span_;
    bool chosen_ = false;
};

} // namespace Mreport
