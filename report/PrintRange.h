#pragma once

#include <cstdint>
#include <string_view>

namespace Mreport {

/// Record numbers, both included.
struct RecordRange {
    std::int32_t first = 0;
    std::int32_t last = 0;

    std::int64_t Count() const { return std::int64_t{last} - first + 1; }
    bool operator==(const RecordRange&) const = default;
};

inline constexpr int maxPrintedGraphPoints = 1500;

inline constexpr std::string_view invalidRangeText = "Invalid range";
inline constexpr std::string_view outOfRangeText = "Out of range";
inline constexpr std::string_view tooManyRecordsText =
    "Too much record to print a graph (Max. 1500 points)";

/// The leading number of a range box as a record number; 0 without one.
std::int32_t TypedRecordNumber(std::string_view text);

/// The message that refuses a typed range for a page holding `page`; empty where it can be printed.
std::string_view RefuseRange(RecordRange typed, RecordRange page);

/// The message that refuses a range for a graph; empty where it can be drawn.
std::string_view RefuseGraphRange(RecordRange range);

} // namespace Mreport
