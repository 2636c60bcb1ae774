#include "report/SpanMoves.h"

#include <algorithm>
#include <cmath>

namespace Mreport::SpanMoves {

RecordSpan Within(const RecordSpan& span, std::int64_t records) {
    const std::int64_t length = std::clamp(span.Count(), std::min(shortest, records), records);
    const std::int64_t first = std::clamp(span.first, std::int64_t{0}, records - length);
    return {first, first + length};
}

RecordSpan Moved(const RecordSpan& span, std::int64_t records) {
    return {span.first + records, span.end + records};
}

RecordSpan Zoomed(const RecordSpan& span, double factor, double share) {
    const auto length = static_cast<double>(span.Count());
    const double wanted = factor > 1 ? std::ceil(length * factor) : std::floor(length * factor);
    const std::int64_t first = span.first + std::llround(share * (length - wanted));
    return {first, first + std::max(static_cast<std::int64_t>(std::llround(wanted)), shortest)};
}

RecordSpan WithBegin(const RecordSpan& span, std::int64_t first) {
    return {std::clamp(first, std::int64_t{0}, std::max(span.end - shortest, std::int64_t{0})),
            span.end};
}

RecordSpan WithEnd(const RecordSpan& span, std::int64_t end) {
    return {span.first, std::max(end, span.first + shortest)};
}

RecordSpan Around(const RecordSpan& span, std::int64_t place) {
    return Moved(span, place - span.Count() / 2 - span.first);
}

} // namespace Mreport::SpanMoves
