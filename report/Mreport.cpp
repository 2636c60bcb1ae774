#include "report/Mreport.h"

#include <algorithm>
#include <limits>
#include <system_error>

namespace Mreport {

ReportPages pages;
std::filesystem::path viewedFile;
std::string projectName;
std::int16_t lastPageIndex = 0;
std::int16_t graphPageIndex = 0;
std::int16_t shownPageIndex = 0;
std::int16_t channelCount = 0;
std::array<bool, maxChannels> channelInUse{};
std::array<std::int16_t, maxChannels> channelKind{};
std::array<std::int16_t, maxChannels> channelNumber{};
std::array<bool, tempSensorCount> sensorInUse{};
Quantity unitCode = Quantity::mV;
std::int32_t linesPerRecord = 0;
std::int32_t recordsInPage = 0;
std::int32_t pageFirstRecordOffset = 0;
bool viewingLiveFile = false;
bool loading = false;
bool reloadInProgress = false;
bool autoUpdate = false;
bool scrollGuard = false;

std::string UnitText(Quantity unit) {
    return std::string(Quantities::Label(unit));
}

bool IsLiveFile(const std::filesystem::path& file) {
    return FileOpr::measuring && !FileOpr::targetFile.empty() &&
           file.lexically_normal() == FileOpr::targetFile.lexically_normal();
}

bool FileBegunAnew() {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(viewedFile, unknown);
    return !unknown && size < pages.NextOffset();
}

namespace {
/// The last record number of the pages before; 0 where there is none.
std::int32_t LastRecordBefore(int pageIndex) {
    while (--pageIndex >= 0)
        if (const auto range = pages.Records(pageIndex))
            return range->last;
    return 0;
}
} // namespace

std::int32_t PageRecordRange(int pageIndex, std::int32_t& lastRecord) {
    const auto range = pages.Records(pageIndex);
    lastRecord = range ? range->last : 0;
    pageFirstRecordOffset = range ? std::max(range->first - 1, 0) : LastRecordBefore(pageIndex);
    // Numbers from elsewhere may run backwards or far apart.
    const std::int64_t count =
        range ? std::int64_t{range->last} - pageFirstRecordOffset : std::int64_t{0};
    recordsInPage = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(count, 0, static_cast<std::int64_t>(pages.LineCount(pageIndex))));
    return recordsInPage;
}

void CountLinesPerRecord() {
    linesPerRecord = 0;
    const auto range = pages.Records(0);
    if (!range)
        return;
    // The last record may be cut short; the one before it is whole.
    const std::size_t lines = range->lastLine > range->previousLine
                                  ? range->lastLine - range->previousLine
                                  : pages.LineCount(0) - range->lastLine;
    linesPerRecord = static_cast<std::int32_t>(
        std::min<std::size_t>(lines, std::numeric_limits<std::int32_t>::max()));
}

ScrollLimits ResetScroll(bool setValue) {
    ScrollLimits limits{std::min(spanLength, recordsInPage), recordsInPage, std::nullopt};
    if (setValue)
        limits.value = viewingLiveFile ? limits.max : limits.min;
    return limits;
}

bool SensorUsed(int sensor) {
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(channelCount); ++channel)
        if (channelKind[channel] != kind::notInUse && channelNumber[channel] == sensor)
            return true;
    return false;
}

std::vector<int> Series(Quantity unit) {
    std::vector<int> numbers;
    if (unit == Quantity::celsius) {
        for (int sensor = 1; sensor <= tempSensorCount; ++sensor)
            if (sensorInUse[static_cast<std::size_t>(sensor - 1)] && SensorUsed(sensor))
                numbers.push_back(sensor);
        return numbers;
    }
    for (int channel = 1; channel <= channelCount; ++channel) {
        const auto index = static_cast<std::size_t>(channel - 1);
        if (channelKind[index] != kind::notInUse && channelInUse[index])
            numbers.push_back(channel);
    }
    return numbers;
}

void Reset() {
    pages.Clear();
    viewedFile.clear();
    projectName.clear();
    lastPageIndex = graphPageIndex = shownPageIndex = 0;
    channelCount = 0;
    channelInUse.fill(false);
    channelKind.fill(kind::notInUse);
    channelNumber.fill(0);
    sensorInUse.fill(false);
    unitCode = Quantity::mV;
    linesPerRecord = recordsInPage = pageFirstRecordOffset = 0;
    viewingLiveFile = loading = reloadInProgress = autoUpdate = scrollGuard = false;
}

} // namespace Mreport
