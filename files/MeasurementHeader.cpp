#include "files/MeasurementHeader.h"

#include "base/Letters.h"
#include "files/MeasurementLines.h"

#include <algorithm>

namespace FileOpr {

namespace {

namespace Text = MeasurementTexts;
using Channel = MeasurementHeader::Channel;

std::string Trimmed(std::string_view text) {
    return std::string(Letters::Trimmed(text, [](char c) { return c == ' '; }));
}

struct PlainRow {
    std::string_view label;
    std::string Channel::*field;
};

constexpr std::array<PlainRow, 10> plainRows = {{
    {Text::channelRow, &Channel::name},
    {Text::electrodeRow, &Channel::electrode},
    {Text::serialNoRow, &Channel::serialNo},
    {Text::refTypeRow, &Channel::refType},
    {Text::refSerialNoRow, &Channel::refSerialNo},
    {Text::tempSensorRow, &Channel::tempSensor},
    {Text::dateRow, &Channel::calibrationDate},
    {Text::timeRow, &Channel::calibrationTime},
    {Text::pointCountRow, &Channel::pointCount},
    {Text::stdUnitRow, &Channel::stdUnit},
}};

/// The field of a numbered row such as "Standard 3:"; null for another label.
template <std::size_t count>
std::string* NumberedField(std::array<std::string, count>& fields, std::string_view label,
                           std::string_view rows) {
    if (!label.starts_with(rows))
        return nullptr;
    for (std::size_t k = 0; k < count; ++k)
        if (label == Text::NumberedRow(rows, k + 1))
            return &fields[k];
    return nullptr;
}

/// Where a row's cell of a channel belongs; null for a row without a place.
std::string* FieldOf(Channel& channel, std::string_view label) {
    const auto plain = std::ranges::find(plainRows, label, &PlainRow::label);
    if (plain != plainRows.end())
        return &(channel.*plain->field);
    if (auto* field = NumberedField(channel.standard, label, Text::standardRows))
        return field;
    if (auto* field = NumberedField(channel.caliData, label, Text::caliDataRows))
        return field;
    return NumberedField(channel.slope, label, Text::slopeRows);
}

void TakeProject(MeasurementHeader& header, std::string_view line) {
    const auto take = [](std::string_view part, std::string_view label) {
        return std::string(part.starts_with(label) ? part.substr(label.size())
                                                   : std::string_view());
    };
    header.projectName = take(line.substr(0, line.find('\t')), Text::projectName);
    const auto cells = MeasurementLines::SplitCells(line);
    header.analyst = take(cells.cell[0], Text::analyst);
    header.createdAt = take(cells.cell[1], Text::createdAt);
}

void TakeRow(MeasurementHeader& header, std::string_view line) {
    const auto label = MeasurementLines::Label(line);
    if (FieldOf(header.channels[0], label) == nullptr)
        return;
    const auto cells = MeasurementLines::SplitCells(line);
    const bool electrodes = label == Text::electrodeRow;
    header.hasElectrodes = header.hasElectrodes || electrodes;
    if (electrodes || label == Text::channelRow)
        header.channelCount = cells.count;
    for (std::size_t i = 0; i < cells.count; ++i)
        *FieldOf(header.channels[i], label) = Trimmed(cells.cell[i]);
}

} // namespace

void MeasurementHeader::TakeLine(std::string_view line) {
    if (line.starts_with(Text::projectName))
        TakeProject(*this, line);
    else if (line == Text::calibrationInfo)
        hasCalibration = true;
    else
        TakeRow(*this, line);
}

} // namespace FileOpr
