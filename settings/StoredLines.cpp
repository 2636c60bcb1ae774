#include "settings/StoredLines.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/Letters.h"
#include "base/NumberText.h"
#include "platform/Platform.h"
#include "settings/Fields.h"

#include <algorithm>
#include <array>

namespace mWinInit {

namespace {

constexpr std::string_view notApplicable = "N/A";
constexpr std::string_view noReference = "None";

/// What a line can hold: a control character inside a text would end the line or its field.
std::string Storable(std::string text) {
    constexpr unsigned char firstPrintable = 32;
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < firstPrintable; }, ' ');
    return text;
}

/// "4", "4 and 5" or "4 to 6".
std::string Numbers(int first, int last) {
    if (first == last)
        return std::to_string(first);
    return std::to_string(first) + (last == first + 1 ? " and " : " to ") + std::to_string(last);
}

/// What comes back of a line that is too long: its whole fields, or the beginning of its only one.
std::string WholeFields(const std::string& line) {
    return line.substr(0, std::min(line.rfind(fieldSeparator, longestValue), longestValue));
}

/// One character more than comes back: it tells whether the last field is whole.
std::string ReadOneMore(const std::string& section, const std::string& key) {
    constexpr std::size_t withClosingNul = longestValue + 2;
    return platform::Current().profile.GetString(section, key, {}, withClosingNul);
}

int PointsIn(std::string_view line, int firstPoint) {
    return std::max(FieldCount(line) - firstPoint + 1, 0);
}

} // namespace

std::string ReadValue(const std::string& section, const std::string& key,
                      const std::string& fallback) {
    return platform::Current().profile.GetString(section, key, fallback, longestValue + 1);
}

std::string ReadChannelLine(const std::string& section, const std::string& key) {
    constexpr int names = 4; // fields in front of the numbers; of a name the beginning comes back
    const std::string stored = ReadOneMore(section, key);
    const std::string line = stored.substr(0, longestValue);
    return line.size() < stored.size() && FieldCount(line) > names ? WholeFields(stored) : line;
}

std::string ReadTableLine(const std::string& section, const std::string& key, int countField,
                          int firstPoint) {
    std::string stored = ReadOneMore(section, key);
    if (stored.size() <= longestValue)
        return stored;
    std::string line = WholeFields(stored);
    if (const auto begin = FieldBegin(line, countField)) {
        const int claimed = NumberText::LeadingInteger(GetField(line, countField, 1));
        const int count = std::min(claimed, PointsIn(line, firstPoint));
        const std::size_t end = std::min(line.find(fieldSeparator, *begin), line.size());
        line.replace(*begin, end - *begin, NumberText::Plain(std::int32_t{count}));
    }
    return line;
}

std::string Pair(float first, float second) {
    return NumberText::Plain(first) + ";" + NumberText::Plain(second);
}

void DecodePair(std::string_view line, int field, float& first, float& second) {
    first = NumberText::LeadingSingle(GetField(line, field, 1));
    second = NumberText::LeadingSingle(GetField(line, field, 2));
}

std::string ChannelLine(const ChannelSetupRecord& channel) {
    const std::array<std::string, 6> fields = {
        Storable(channel.Electrode),
        Storable(channel.SerialNo),
        Storable(channel.RefType),
        Storable(channel.RefSerialNo),
        channel.MolarMass == 0 ? std::string(notApplicable) : NumberText::Plain(channel.MolarMass),
        NumberText::Plain(std::int32_t{channel.TempSensor})};
    return JoinFields(fields);
}

void DecodeChannel(ChannelSetupRecord& channel, std::string_view line) {
    if (line.empty()) { // the molar mass stays
        channel.Electrode = Electrode::noneName;
        channel.SerialNo.clear();
        channel.RefType = noReference;
        channel.RefSerialNo.clear();
        channel.TempSensor = 0;
        return;
    }
    channel.Electrode = GetField(line, 1, 1);
    channel.SerialNo = GetField(line, 2, 1);
    channel.RefType = GetField(line, 3, 1);
    channel.RefSerialNo = GetField(line, 4, 1);
    const std::string mass = GetField(line, 5, 1);
    channel.MolarMass =
        Letters::SameText(notApplicable, mass) ? 0 : NumberText::LeadingSingle(mass);
    channel.TempSensor = NumberText::LeadingInteger(GetField(line, 6, 1));
}

std::string CalibrationLine(const CalibrationRecord& record) {
    std::vector<std::string> fields = {Storable(record.CalibrationDate),
                                       std::to_string(record.Points()),
                                       NumberText::Plain(record.StdUnit)};
    for (std::size_t j = 0; j < record.Points(); ++j)
        fields.push_back(Pair(record.Standard[j], record.CaliData[j]));
    return JoinFields(fields);
}

void DecodeCalibration(CalibrationRecord& record, std::string_view line, bool isPH) {
    record.PointCount = 0;
    record.StdUnit = 0;
    if (!line.empty()) {
        record.CalibrationDate = GetField(line, 1, 1);
        const int claimed = NumberText::LeadingInteger(GetField(line, calibrationCountField, 1));
        record.StdUnit = NumberText::LeadingSingle(GetField(line, 3, 1));
        record.PointCount = static_cast<std::int16_t>(std::clamp(claimed, 0, maxCalibrationPoints));
    }
    int field = firstCalibrationPoint;
    for (std::size_t point = 0; point < record.Points(); ++point)
        DecodePair(line, field++, record.Standard[point], record.CaliData[point]);
    Measure::RestoreSlopes(record, isPH); // the line holds none
}

void LineWriter::WriteLine(const std::string& section, const std::string& key,
                           const std::string& line) {
    if (platform::Current().profile.Write(section, key, line) || unwritable_)
        return;
    unwritable_ = true; // said once, however many lines fail
    messages_.emplace_back("The settings could not be saved: the settings file cannot be written.");
}

void LineWriter::WriteText(const std::string& section, const std::string& key,
                           const std::string& text, const std::string& name) {
    WriteLine(section, key, Storable(text));
    if (text.size() > longestValue)
        messages_.push_back("The " + name + " is longer than " + std::to_string(longestValue) +
                            " characters. Only its beginning will come back.");
}

void LineWriter::WriteNumber(const std::string& section, const std::string& key, int number) {
    WriteLine(section, key, NumberText::Plain(std::int32_t{number}));
}

void LineWriter::WriteCalibration(const std::string& section, const std::string& key,
                                  const CalibrationRecord& record, std::size_t channel) {
    const std::string line = CalibrationLine(record);
    WriteLine(section, key, line);
    if (line.size() <= longestValue)
        return;
    const int kept = PointsIn(WholeFields(line), firstCalibrationPoint);
    const int points = PointsIn(line, firstCalibrationPoint);
    const bool one = kept + 1 == points;
    messages_.push_back("Channel " + std::to_string(channel + 1) + ": calibration point" +
                        (one ? " " : "s ") + Numbers(kept + 1, points) + (one ? " does" : " do") +
                        " not fit into the settings file and will not come back.");
}

void LineWriter::WriteChannel(const std::string& section, const std::string& key,
                              const ChannelSetupRecord& setup, std::size_t channel) {
    const std::string line = ChannelLine(setup);
    WriteLine(section, key, line);
    if (line.size() > longestValue)
        messages_.push_back("Channel " + std::to_string(channel + 1) +
                            ": the names and serial numbers are longer than the settings file "
                            "can hold. Only their beginning will come back.");
}

} // namespace mWinInit
