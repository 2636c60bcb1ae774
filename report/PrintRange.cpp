#include "report/PrintRange.h"

#include "base/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Mreport {

std::int32_t TypedRecordNumber(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double number = std::nearbyint(NumberText::Leading(text));
    return static_cast<std::int32_t>(
        std::clamp(number, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

std::string_view RefuseRange(RecordRange typed, RecordRange page) {
    if (typed.last < typed.first || typed.first == 0)
        return invalidRangeText;
    const auto outside = [page](std::int32_t record) {
        return record < page.first || record > page.last;
    };
    return outside(typed.first) || outside(typed.last) ? outOfRangeText : std::string_view();
}

std::string_view RefuseGraphRange(RecordRange range) {
    return range.Count() > maxPrintedGraphPoints ? tooManyRecordsText : std::string_view();
}

} // namespace Mreport
