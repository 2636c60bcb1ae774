#include "report/HistoryCsv.h"

#include "base/CodePage.h"
#include "base/NumberText.h"
#include "base/Utf8.h"
#include "platform/Platform.h"

#include <algorithm>
#include <initializer_list>

namespace Mreport {

namespace {

std::string Line(std::initializer_list<std::string> cells) {
    std::string line;
    for (const std::string& cell : cells)
        line += (line.empty() ? "" : ",") + CsvField(CodePage::ToUtf8(cell));
    return line + "\r\n";
}

std::string IsoTime(const LocalTime& time) {
    std::string text = History::SortableTime(time);
    std::ranges::replace(text, ' ', 'T');
    return text;
}

std::string ChannelText(const std::optional<int>& channel) {
    return channel ? std::to_string(*channel + 1) : std::string();
}

std::string Plain(const std::optional<float>& value) {
    return value ? NumberText::Plain(*value) : std::string();
}

} // namespace

std::string CalibrationsCsv(std::span<const History::PastCalibration> calibrations) {
    std::string csv = Line({"Time", "Electrode", "Serial number", "Channel", "Unit",
                            "Points (standard mV)", "Slopes", "% of theory", "Offset mV",
                            "Temperature", "Reference type", "Reference serial number", "Analyst"});
    for (const History::PastCalibration& past : calibrations)
        csv += Line({IsoTime(past.at), past.electrode, past.serialNo, ChannelText(past.channel),
                     past.unit, past.points, past.slopes, Plain(past.slope_percent),
                     Plain(past.offset_mV), past.temperature_celsius, past.reference,
                     past.referenceSerialNo, past.analyst});
    return csv;
}

std::string EventsCsv(std::span<const History::NumberedEntry> events) {
    std::string csv = Line({"Number", "Time", "Event", "Channel", "Electrode", "Serial number",
                            "What happened", "File", "Analyst", "User"});
    for (const auto& [number, entry] : events)
        csv += Line({std::to_string(number), IsoTime(entry.at),
                     std::string(History::NameOf(entry.kind)), ChannelText(entry.channel),
                     entry.electrode, entry.serialNo, entry.text, entry.file, entry.analyst,
                     entry.user});
    return csv;
}

void SaveCsv(const std::filesystem::path& file, const std::string& csv, CsvReader reader) {
    const std::string_view mark = reader == CsvReader::spreadsheet ? Utf8::byteOrderMark : "";
    platform::Current().files.Replace(file, std::string(mark) + csv, platform::Readers::asUsual);
}

} // namespace Mreport
