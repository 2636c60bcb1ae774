#include "files/MeasurementReader.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"

#include <fstream>

namespace FileOpr {

namespace {

using MeasurementLines::SplitCells;

void ReadValues(MeasurementRecord& record, std::string_view line) {
    const auto quantity = MeasurementLines::QuantityOf(line);
    if (!quantity)
        return;
    const auto cells = SplitCells(line);
    for (std::size_t i = 0; i < cells.count; ++i) {
        auto& cell = record.cells[i][*quantity];
        cell.assign(cells.cell[i].substr(0, MeasurementTexts::cellWidth));
        cell.resize(MeasurementTexts::cellWidth, ' ');
    }
}

void Begin(MeasurementRecord& record, const RecordWalk& walk, std::string_view comment) {
    record.number = walk.Number();
    record.timeStamp = walk.TimeStamp();
    record.comment = comment;
    for (auto& channel : record.cells)
        for (auto& cell : channel)
            cell.assign(MeasurementTexts::cellWidth, ' ');
}

} // namespace

MeasurementReader::MeasurementReader(std::string_view text) : rest_(text) {
    std::string_view line;
    while (!begun_ && MeasurementLines::TakeLine(rest_, line)) {
        if (Step(line) == RecordWalk::Step::other)
            header_.TakeLine(line);
    }
}

RecordWalk::Step MeasurementReader::Step(std::string_view line) {
    const auto step = walk_.Take(line);
    if (step == RecordWalk::Step::begins) {
        begun_ = true;
        comment_ = MeasurementLines::CommentText(line);
    }
    return step;
}

bool MeasurementReader::Next(MeasurementRecord& record) {
    std::string_view line;
    while (!begun_ && MeasurementLines::TakeLine(rest_, line))
        Step(line);
    if (!begun_)
        return false;
    Begin(record, walk_, comment_);
    begun_ = false;
    complete_ = false;
    while (!begun_ && !complete_ && MeasurementLines::TakeLine(rest_, line)) {
        const auto step = Step(line);
        complete_ = step == RecordWalk::Step::ends;
        if (step == RecordWalk::Step::row)
            ReadValues(record, line);
    }
    return true;
}

MeasurementFile ReadMeasurementFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    std::error_code unknownSize;
    const auto size = std::filesystem::file_size(file, unknownSize);
    if (!unknownSize) {
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
