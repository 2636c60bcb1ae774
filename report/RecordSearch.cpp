#include "report/RecordSearch.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"
#include "report/ShownGraph.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Mreport {

namespace {

constexpr std::string_view invalidTimeStamp = "Not valid";
constexpr std::string_view timeMark = "\tAt"; // what follows may lack its tab

std::string TimeStampOf(std::string_view recordLine) {
    const auto mark = recordLine.find(timeMark);
    if (mark == std::string_view::npos)
        return std::string(invalidTimeStamp);
    return Mcommon::TrimControl(recordLine.substr(mark + timeMark.size()));
}

} // namespace

std::vector<RecordSearch::Entry> RecordSearch::Entries() const {
    std::vector<Entry> entries;
    for (std::size_t channel = 0; channel < file_.channelCount; ++channel)
        if (file_.channelKind[channel] != Electrode::Kind::none)
            entries.push_back({channel, "Chan. " + std::to_string(channel + 1)});
    for (int sensor = 1; sensor <= tempSensorCount; ++sensor) {
        const auto has = [sensor](int number) { return number == sensor; };
        if (std::any_of(file_.channelNumber.begin(), file_.channelNumber.end(), has))
            entries.push_back({*SensorPosition(sensor), "Temp. " + std::to_string(sensor)});
    }
    return entries;
}

std::vector<Quantity> RecordSearch::Units(std::size_t entryIndex) const {
    if (entryIndex >= maxChannels)
        return {Quantity::celsius};
    std::vector<Quantity> units;
    const Electrode::Kind kind = file_.channelKind[entryIndex];
    for (const auto& row : Quantities::table)
        if (Quantities::Gives(kind, row.quantity))
            units.push_back(row.quantity);
    return units;
}

std::optional<int> RecordSearch::PageOf(FileRecord record) const {
    for (int page = 0; page < file_.pages.Count(); ++page)
        if (const auto range = file_.pages.Records(page); range && range->last >= record.number)
            return page;
    return std::nullopt;
}

bool RecordSearch::Find(FileRecord record) {
    Forget();
    const auto page = PageOf(record);
    if (!page)
        return false;
    const auto line = file_.pages.FindPrefix(*page, std::string(MeasurementTexts::record) +
                                                        std::to_string(record.number));
    if (!line)
        return false;
    place_ = {*page, *line};
    ReadRecord();
    return true;
}

void RecordSearch::TakeRecordAt(const LinePlace& place) {
    Forget();
    place_ = place;
    ReadRecord();
}

void RecordSearch::Forget() {
    timeStamp_.clear();
    comment_.clear();
    values_ = {};
    temperatures_ = {};
}

void RecordSearch::ReadRecord() {
    timeStamp_ = TimeStampOf(file_.pages.Text(place_.page, place_.line));
    file_.pages.ForEachLineOfRecord(
        place_.page, place_.line, [this](RecordWalk::Step step, std::string_view text) {
            if (step == RecordWalk::Step::begins)
                comment_ = MeasurementLines::CommentText(text);
            else if (const auto unit = MeasurementLines::QuantityOf(text))
                KeepRow(*unit, text);
            return true;
        });
}

void RecordSearch::KeepRow(Quantity unit, std::string_view valueLine) {
    const auto cells = MeasurementLines::SplitCells(valueLine);
    if (Quantities::IsOfSensors(unit))
        return KeepTemperatures(cells);
    const std::size_t columns = std::min(cells.count, file_.channelCount);
    for (std::size_t channel = 0; channel < columns; ++channel)
        if (KindGives(file_.channelKind[channel], unit))
            values_[channel][unit] = Mcommon::TrimControl(cells.cell[channel]);
}

void RecordSearch::KeepTemperatures(const MeasurementLines::Cells& cells) {
    for (std::size_t channel = 0; channel < cells.count; ++channel) {
        const auto position = SensorPosition(file_.channelNumber[channel]);
        if (!position)
            continue;
        std::string& kept = temperatures_[*position - maxChannels];
        const std::string cell = Mcommon::TrimControl(cells.cell[channel]);
        if (kept.empty() ||
            MeasurementLines::IsMissing(kept)) // an idle channel may share the sensor
            kept = cell;
    }
}

std::string RecordSearch::ValueText(std::size_t entryIndex, Quantity unit) const {
    const std::string& text = entryIndex >= maxChannels ? temperatures_.at(entryIndex - maxChannels)
                                                        : values_.at(entryIndex)[unit];
    if (!text.empty() && MeasurementLines::IsMissing(text)) // a missing value is not 0
        return "NA";
    const auto value = static_cast<float>(NumberText::Leading(text));
    return NumberText::Format(value, Quantities::Of(unit).pattern) + " " + UnitText(unit);
}

FileRecord RecordNumberOf(std::string_view entry) {
    constexpr double largest = std::numeric_limits<std::int32_t>::max();
    return {static_cast<std::int32_t>(
        std::clamp(std::nearbyint(NumberText::Leading(entry)), 0.0, largest))};
}

} // namespace Mreport
