#include "files/MeasurementReader.h"

#include "base/CodePage.h"
#include "base/Letters.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace FileOpr {

namespace {

using MeasurementLines::SplitCells;

std::string Trimmed(std::string_view text) {
    return std::string(Letters::Trimmed(text, [](char c) { return c == ' '; }));
}

/// The index behind a prefix, from 0: "Standard 3:" gives 2; -1 for another label.
int NumberedRow(std::string_view label, std::string_view prefix, int rows) {
    if (label.size() != prefix.size() + 2 || !label.starts_with(prefix) || !label.ends_with(':'))
        return -1;
    const int index = label[prefix.size()] - '1';
    return index >= 0 && index < rows ? index : -1;
}

using Channel = MeasurementHeader::Channel;

struct PlainRow {
    std::string_view label;
    std::string Channel::*field;
};

constexpr std::array<PlainRow, 10> plainRows = {{
    {"Channel :", &Channel::name},
    {"Electrode   :", &Channel::electrode},
    {"Serial No.  :", &Channel::serialNo},
    {"Ref. Type   :", &Channel::refType},
    {"Ref. S/N    :", &Channel::refSerialNo},
    {"Temp. Sens. :", &Channel::tempSensor},
    {"Date :", &Channel::calibrationDate},
    {"Time :", &Channel::calibrationTime},
    {"Cali. Points :", &Channel::pointCount},
    {"Std. Unit :", &Channel::stdUnit},
}};

/// Where a header row's cell of a channel belongs; null for a row without a place.
std::string* FieldOf(Channel& channel, std::string_view label) {
    for (const auto& row : plainRows)
        if (label == row.label)
            return &(channel.*row.field);
    if (const int k = NumberedRow(label, "Standard ", maxCalibrationPoints); k >= 0)
        return &channel.standard[static_cast<std::size_t>(k)];
    if (const int k = NumberedRow(label, "Cali. Data ", maxCalibrationPoints); k >= 0)
        return &channel.caliData[static_cast<std::size_t>(k)];
    if (const int k = NumberedRow(label, "Slope ", maxCalibrationPoints - 1); k >= 0)
        return &channel.slope[static_cast<std::size_t>(k)];
    return nullptr;
}

void ReadRow(MeasurementHeader& header, std::string_view line) {
    const auto label = MeasurementLines::Label(line);
    if (FieldOf(header.channels[0], label) == nullptr)
        return;
    const auto cells = SplitCells(line);
    if (label == plainRows[0].label)
        header.channelCount = cells.count;
    for (std::size_t i = 0; i < static_cast<std::size_t>(cells.count); ++i)
        *FieldOf(header.channels[i], label) = Trimmed(cells.cell[i]);
}

void ReadProject(MeasurementHeader& header, std::string_view line) {
    constexpr std::string_view project = "Project Name: ";
    constexpr std::string_view analyst = "Analyst: ";
    constexpr std::string_view created = "Report created at: ";
    const auto take = [](std::string_view part, std::string_view label) {
        return std::string(part.starts_with(label) ? part.substr(label.size())
                                                   : std::string_view());
    };
    const auto first = std::min(line.find('\t'), line.size());
    header.projectName = take(line.substr(0, first), project);
    const auto cells = SplitCells(line);
    header.analyst = take(cells.cell[0], analyst);
    header.createdAt = take(cells.cell[1], created);
}

void ReadValues(MeasurementRecord& record, std::string_view line) {
    const auto quantity = MeasurementLines::QuantityOf(line);
    if (!quantity)
        return;
    const auto cells = SplitCells(line);
    for (std::size_t i = 0; i < static_cast<std::size_t>(cells.count); ++i) {
        auto& cell = record.cells[i][*quantity];
        cell.assign(cells.cell[i].substr(0, cellWidth));
        cell.resize(cellWidth, ' ');
    }
}

void Begin(MeasurementRecord& record, std::string_view line) {
    record.number = MeasurementLines::RecordNumber(line);
    record.timeStamp = MeasurementLines::TimeStamp(line);
    record.comment.clear();
    for (auto& channel : record.cells)
        for (auto& cell : channel)
            cell.assign(cellWidth, ' ');
}

} // namespace

MeasurementReader::MeasurementReader(std::string_view text) : rest_(text) {
    ReadHeader();
}

void MeasurementReader::ReadHeader() {
    std::string_view line;
    for (auto text = rest_; MeasurementLines::TakeLine(text, line); rest_ = text) {
        if (MeasurementLines::IsRecordStart(line))
            return;
        if (line.starts_with("Project Name: "))
            ReadProject(header_, line);
        else if (line == "Calibration Info.")
            header_.hasCalibration = true;
        else
            ReadRow(header_, line);
    }
}

bool MeasurementReader::Next(MeasurementRecord& record) {
    std::string_view line;
    do {
        if (!MeasurementLines::TakeLine(rest_, line))
            return false;
    } while (!MeasurementLines::IsRecordStart(line));
    Begin(record, line);

    complete_ = false;
    bool commentDue = true;
    for (auto text = rest_; MeasurementLines::TakeLine(text, line); rest_ = text) {
        if (commentDue && MeasurementLines::IsComment(line))
            record.comment = MeasurementLines::CommentText(line);
        else if (MeasurementLines::IsRecordStart(line))
            return true; // a cut record: the next one begins without a separator
        else if (MeasurementLines::IsSeparator(line)) {
            complete_ = true;
            rest_ = text;
            return true;
        } else {
            ReadValues(record, line);
        }
        commentDue = false;
    }
    return true;
}

MeasurementFile ReadMeasurementFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    std::error_code unknownSize;
    const auto size = std::filesystem::file_size(file, unknownSize);
    if (stream && !unknownSize) {
        text.resize(static_cast<std::size_t>(size));
        stream.read(text.data(), static_cast<std::streamsize>(size));
        text.resize(static_cast<std::size_t>(stream.gcount()));
    }
    if (unknownSize || stream.bad() || !stream.is_open())
        throw RunTimeError("Reading " + CodePage::NameOf(file) + ": " +
                           (unknownSize ? "Path not found" : "Path/File access error"));
    MeasurementReader reader(text);
    MeasurementFile result;
    result.header = reader.Header();
    MeasurementRecord record;
    while (reader.Next(record)) {
        result.records.push_back(record);
        result.complete = reader.LastWasComplete();
    }
    return result;
}

} // namespace FileOpr
