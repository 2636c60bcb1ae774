#include "report/ChannelHeader.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"
#include "report/ShownGraph.h"
#include "report/ViewedFile.h"
#include "settings/mWinInit.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr int longestHead = 200;  // lines; a foreign file may be all header
constexpr int longestRecord = 16; // lines that are looked at

/// The kind of electrode that a value in this quantity tells of.
Electrode::Kind KindTold(Quantity quantity) {
    using enum Electrode::Kind;
    for (const Electrode::Kind kind : {redox, pH, ion})
        if (Quantities::Gives(kind, quantity))
            return kind;
    return redox;
}

} // namespace

ChannelHeader::ChannelHeader(ViewedFile& file, ShownGraph& shown) : file_(file), shown_(shown) {
    file_.header = {};
    file_.channelCount = 0;
    file_.channelKind.fill(Electrode::Kind::none);
    file_.channelNumber.fill(0);
    shown_.channelInUse.fill(true);
    shown_.sensorInUse.fill(true);
}

void ChannelHeader::TakeLine(std::string_view line) {
    if (!MeasurementLines::IsSeparator(line) && headLines_ < longestHead) {
        head_.append(line).push_back('\n');
        ++headLines_;
    }
    file_.header.TakeLine(line);
}

void ChannelHeader::TakeCell(std::size_t channel, const std::string& cell) {
    if (cell == Electrode::noneName) {
        ++unusedChannels_;
        shown_.channelInUse[channel] = false;
        file_.channelKind[channel] = Electrode::Kind::none;
    } else if (cell == MeasurementTexts::noHeaderValue) {
        file_.channelNumber[channel] = 0;
    } else if (cell == Electrode::redoxName) {
        file_.channelKind[channel] = Electrode::Kind::redox;
    } else if (cell == Electrode::pHName) {
        file_.channelKind[channel] = Electrode::Kind::pH;
    } else if (const int number = NumberText::LeadingInteger(cell); number != 0) {
        file_.channelNumber[channel] = number;
    } else {
        file_.channelKind[channel] = Electrode::Kind::ion;
    }
}

int ChannelHeader::Finish() {
    FileOpr::MeasurementHeader& header = file_.header;
    header.projectName = Mcommon::TrimControl(header.projectName);
    if (header.hasElectrodes)
        file_.channelCount = header.channelCount;
    for (std::size_t i = 0; i < file_.channelCount; ++i)
        TakeCell(i, header.channels[i].electrode);
    for (std::size_t i = 0; i < header.channels.size(); ++i)
        if (!header.channels[i].tempSensor.empty()) // the row may be missing
            TakeCell(i, header.channels[i].tempSensor);
    if (!header.hasElectrodes)
        InferFromFirstRecord();
    shown_.channelWanted = shown_.channelInUse;
    if (file_.channelCount == 0)
        file_.channelCount = mWinInit::ChannelsInUse();
    return static_cast<int>(maxChannels - unusedChannels_);
}

/// Reads on behind the comment line with which the first record begins.
void ChannelHeader::InferFromFirstRecord() {
    LineScanner scanner(file_.pages.Source(), file_.pages.NextOffset());
    RecordWalk walk = file_.pages.Walk();
    ScannedLine line;
    for (int count = 0; count < longestRecord && scanner.Next(line); ++count) {
        const std::string text = file_.pages.Decoded(line.text);
        if (walk.Take(text) != RecordWalk::Step::row)
            return;
        TakeInferredRow(text);
    }
}

void ChannelHeader::TakeInferredRow(std::string_view line) {
    const auto quantity = MeasurementLines::QuantityOf(line);
    if (!quantity)
        return;
    const auto cells = MeasurementLines::SplitCells(line);
    file_.channelCount = std::max(file_.channelCount, cells.count);
    for (std::size_t i = 0; i < cells.count; ++i) {
        if (MeasurementLines::IsMissing(Mcommon::TrimControl(cells.cell[i])))
            continue;
        if (*quantity != Quantity::celsius)
            file_.channelKind[i] = KindTold(*quantity);
        else if (i < tempSensorCount) // which one it was is not told; its own is a fair guess
            file_.channelNumber[i] = static_cast<int>(i + 1);
    }
}

} // namespace Mreport
