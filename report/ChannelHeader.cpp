#include "report/ChannelHeader.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"
#include "report/Mreport.h"
#include "settings/mWinInit.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr std::string_view electrodeLabel = "Electrode   :";
constexpr std::string_view sensorLabel = "Temp. Sens. :";
constexpr std::string_view projectMark = "Project Name: ";
constexpr int longestHead = 200; // lines; a foreign file may be all header
constexpr int longestRecord = 16;

void TakeInferredRow(Quantity quantity, const MeasurementLines::Cells& cells) {
    channelCount = std::max(channelCount, static_cast<std::int16_t>(cells.count));
    for (std::size_t i = 0; i < static_cast<std::size_t>(cells.count); ++i) {
        if (MeasurementLines::IsMissing(Mcommon::TrimControl(cells.cell[i])))
            continue;
        switch (quantity) {
        case Quantity::mV:
            channelKind[i] = kind::redox;
            break;
        case Quantity::pH:
            channelKind[i] = kind::pH;
            break;
        case Quantity::ppm:
        case Quantity::mol_l:
            channelKind[i] = kind::ion;
            break;
        case Quantity::celsius:
            if (i < tempSensorCount) // which sensor it was is not told; the own one is a fair guess
                channelNumber[i] = static_cast<std::int16_t>(i + 1);
            break;
        }
    }
}

} // namespace

ChannelHeader::ChannelHeader() {
    projectName.clear();
    channelCount = 0;
    channelInUse.fill(true);
    channelKind.fill(kind::notInUse);
    channelNumber.fill(0);
    sensorInUse.fill(true);
}

void ChannelHeader::TakeLine(std::string_view line) {
    if (!MeasurementLines::IsSeparator(line) && headLines_ < longestHead) {
        head_.append(line).push_back('\n');
        ++headLines_;
    }
    if (line.starts_with(projectMark))
        TakeProject(line);
    const auto label = MeasurementLines::Label(line);
    if (label == electrodeLabel || label == sensorLabel)
        TakeCells(line);
}

void ChannelHeader::TakeProject(std::string_view line) {
    line.remove_prefix(projectMark.size());
    projectName = Mcommon::TrimControl(line.substr(0, line.find('\t')));
}

void ChannelHeader::TakeCells(std::string_view line) {
    const auto cells = MeasurementLines::SplitCells(line);
    const bool electrodes = MeasurementLines::Label(line) == electrodeLabel;
    if (electrodes) {
        electrodesKnown_ = true;
        channelCount = static_cast<std::int16_t>(cells.count);
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(cells.count); ++i) {
        const std::string cell = Mcommon::TrimControl(cells.cell[i]);
        if (cell == Electrode::noneName)
            ++unusedChannels_;
        TakeCell(i, cell);
    }
}

void ChannelHeader::TakeCell(std::size_t channel, const std::string& cell) {
    if (cell == Electrode::noneName) {
        channelInUse[channel] = false;
        channelKind[channel] = kind::notInUse;
    } else if (cell == "N/A") {
        channelNumber[channel] = 0;
    } else if (cell == Electrode::redoxName) {
        channelKind[channel] = kind::redox;
    } else if (cell == Electrode::pHName) {
        channelKind[channel] = kind::pH;
    } else if (const std::int16_t number = NumberText::LeadingInteger(cell); number != 0) {
        channelNumber[channel] = number;
    } else {
        channelKind[channel] = kind::ion;
    }
}

std::int16_t ChannelHeader::Finish() {
    if (!electrodesKnown_)
        InferFromFirstRecord();
    if (channelCount == 0)
        channelCount = mWinInit::HardwareSettings.ChannelCount;
    return static_cast<std::int16_t>(maxChannels - unusedChannels_);
}

void ChannelHeader::InferFromFirstRecord() {
    LineScanner scanner(pages.Source(), pages.NextOffset());
    ScannedLine line;
    for (int count = 0; count < longestRecord && scanner.Next(line); ++count) {
        const std::string text = pages.Decoded(line.text);
        if (MeasurementLines::IsSeparator(text))
            return;
        if (const auto quantity = MeasurementLines::QuantityOf(text))
            TakeInferredRow(*quantity, MeasurementLines::SplitCells(text));
    }
}

} // namespace Mreport
