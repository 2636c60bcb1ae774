#include "report/ViewedFile.h"

#include "base/Letters.h"

#include <algorithm>
#include <limits>
#include <system_error>

namespace Mreport {

namespace {

std::int32_t Bounded(std::int64_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

/// The last record number of the pages before; 0 where there is none.
std::int32_t LastRecordBefore(const ReportPages& pages, int pageIndex) {
    while (--pageIndex >= 0)
        if (const auto range = pages.Records(pageIndex))
            return range->last;
    return 0;
}

} // namespace

bool ViewedFile::SensorUsed(int sensor) const {
    for (std::size_t channel = 0; channel < channelCount; ++channel)
        if (channelKind[channel] != Electrode::Kind::none && channelNumber[channel] == sensor)
            return true;
    return false;
}

std::optional<std::string_view> ViewedFile::SensorCell(const MeasurementLines::Cells& cells,
                                                       int sensor) const {
    for (std::size_t channel = 0; channel < cells.count; ++channel) {
        if (channelKind[channel] == Electrode::Kind::none || channelNumber[channel] != sensor)
            continue;
        const std::string_view cell = Letters::WithoutControl(cells.cell[channel]);
        if (!MeasurementLines::IsMissing(cell))
            return cell;
    }
    return std::nullopt;
}

bool ViewedFile::BegunAnew() const {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    return !unknown && size < pages.NextOffset();
}

PageRecord PageRange::InPage(FileRecord record) const {
    return {Bounded(std::int64_t{record.number} - pageFirstRecordOffset)};
}

FileRecord PageRange::InFile(PageRecord record) const {
    return {Bounded(std::int64_t{record.number} + pageFirstRecordOffset)};
}

PageRange PageRecordRange(const ReportPages& pages, int pageIndex) {
    const auto records = pages.Records(pageIndex);
    if (!records)
        return {0, LastRecordBefore(pages, pageIndex), {}};
    PageRange range{0, std::max(records->first - 1, 0), {records->last}};
    // Numbers from elsewhere may run backwards or far apart.
    const auto lines = static_cast<std::int64_t>(pages.LineCount(pageIndex));
    const std::int64_t count = std::int64_t{records->last} - range.pageFirstRecordOffset;
    range.recordsInPage = Bounded(std::clamp<std::int64_t>(count, 0, lines));
    return range;
}

std::int32_t CountLinesPerRecord(const ReportPages& pages) {
    const auto range = pages.Records(0);
    if (!range)
        return 0;
    // The last record may be cut short; the one before it is whole.
    const std::size_t lines = range->lastLine > range->previousLine
                                  ? range->lastLine - range->previousLine
                                  : pages.LineCount(0) - range->lastLine;
    return static_cast<std::int32_t>(
        std::min<std::size_t>(lines, std::numeric_limits<std::int32_t>::max()));
}

} // namespace Mreport
