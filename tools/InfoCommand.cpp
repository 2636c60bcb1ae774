#include "base/Letters.h"
#include "files/MeasurementLines.h"
#include "report/VerifyResult.h"
#include "report/ViewedFile.h"
#include "report/WholeRun.h"
#include "tools/Commands.h"
#include "tools/OpenedFile.h"

#include <iostream>

namespace tools {

namespace {

using Mreport::ReportPages;
using HeaderCells = FileOpr::MeasurementHeader::Channel;

/// Where a run begins and ends.
struct Extent {
    std::int64_t records = 0;
    std::int32_t first = 0; ///< record number
    std::int32_t last = 0;
    std::string from; ///< time stamp
    std::string to;
    bool cutOff = false; ///< the last record lacks its end
};

std::string TimeAt(const ReportPages& pages, int page, ReportPages::Line line) {
    return Utf8(Letters::TrimControl(MeasurementLines::TimeStamp(pages.Text(page, line))));
}

Extent ExtentOf(const ReportPages& pages) {
    Extent extent;
    extent.records = Mreport::WholeRun::Records(pages);
    extent.cutOff = pages.Walk().InRecord();
    for (int page = 0; page < pages.Count(); ++page) {
        const auto range = pages.Records(page);
        if (!range)
            continue;
        if (extent.from.empty()) {
            extent.first = range->first;
            extent.from = TimeAt(pages, page, range->firstLine);
        }
        extent.last = range->last;
        extent.to = TimeAt(pages, page, range->lastLine);
    }
    return extent;
}

bool IsCalibrated(const HeaderCells& cells) {
    return !MeasurementLines::IsMissing(cells.pointCount);
}

/// The cells of a numbered row that have a value, as far as the points go.
template <class Cells>
std::string Joined(const Cells& cells, const char* between) {
    std::string text;
    for (const std::string& cell : cells)
        if (!MeasurementLines::IsMissing(cell))
            text += (text.empty() ? "" : between) + Utf8(cell);
    return text;
}

std::string CalibrationOf(const HeaderCells& cells) {
    if (!IsCalibrated(cells))
        return "not calibrated";
    return "calibrated " + Utf8(cells.calibrationTime + " " + cells.calibrationDate) + ", " +
           Utf8(cells.pointCount) + " points in " + Utf8(cells.stdUnit) + ", slopes " +
           Joined(cells.slope, " ");
}

std::string LineOf(std::size_t channel, const HeaderCells& cells) {
    std::string line = Mreport::ChannelName(channel) + "  " + Utf8(cells.electrode);
    if (!cells.serialNo.empty())
        line += ", S/N " + Utf8(cells.serialNo);
    if (!MeasurementLines::IsMissing(cells.tempSensor))
        line += ", temperature sensor " + Utf8(cells.tempSensor);
    return line + ", " + CalibrationOf(cells);
}

/// The cells as numbers of JSON would lose their texts' exact form; they stay texts.
template <class Cells>
std::string ArrayOf(const Cells& cells) {
    JsonArray array;
    for (const std::string& cell : cells)
        if (!MeasurementLines::IsMissing(cell))
            array.Add(Json::Quoted(Utf8(cell)));
    return array.Text();
}

std::string JsonOf(std::size_t channel, const HeaderCells& cells) {
    Json json;
    json.Number("channel", static_cast<std::int64_t>(channel) + 1)
        .Text("electrode", Utf8(cells.electrode))
        .Text("serialNo", Utf8(cells.serialNo))
        .Text("refType", Utf8(cells.refType))
        .Text("refSerialNo", Utf8(cells.refSerialNo))
        .Text("tempSensor", Utf8(cells.tempSensor))
        .Boolean("calibrated", IsCalibrated(cells));
    if (IsCalibrated(cells))
        json.Text("calibrationDate", Utf8(cells.calibrationDate))
            .Text("calibrationTime", Utf8(cells.calibrationTime))
            .Text("unit", Utf8(cells.stdUnit))
            .Raw("standards", ArrayOf(cells.standard))
            .Raw("potentials_mV", ArrayOf(cells.caliData))
            .Raw("slopes", ArrayOf(cells.slope));
    return json.Object();
}

std::size_t Channels(const Mreport::ViewedFile& viewed) {
    return viewed.header.hasElectrodes ? viewed.header.channelCount : 0;
}

std::string JsonOf(const std::filesystem::path& file, const Mreport::ViewedFile& viewed,
                   const Extent& extent) {
    JsonArray channels;
    for (std::size_t i = 0; i < Channels(viewed); ++i)
        channels.Add(JsonOf(i, viewed.header.channels[i]));
    return Json()
        .Text("file", NameOf(file))
        .Text("project", Utf8(viewed.header.projectName))
        .Text("analyst", Utf8(viewed.header.analyst))
        .Text("created", Utf8(viewed.header.createdAt))
        .Number("records", extent.records)
        .Number("first", extent.first)
        .Number("last", extent.last)
        .Text("from", extent.from)
        .Text("to", extent.to)
        .Boolean("cutOff", extent.cutOff)
        .Raw("channels", channels.Text())
        .Object();
}

void Print(const std::filesystem::path& file, const Mreport::ViewedFile& viewed,
           const Extent& extent) {
    std::cout << NameOf(file) << '\n';
    if (viewed.header.hasElectrodes)
        std::cout << "  Project  " << Utf8(viewed.header.projectName) << "\n  Analyst  "
                  << Utf8(viewed.header.analyst) << "\n  Created  " << Utf8(viewed.header.createdAt)
                  << '\n';
    std::cout << "  Records  " << Mreport::Grouped(extent.records);
    if (extent.records > 0)
        std::cout << ", " << extent.first << " of " << extent.from << " to " << extent.last
                  << " of " << extent.to;
    std::cout << (extent.cutOff ? "; the last one is cut off\n" : "\n");
    for (std::size_t i = 0; i < Channels(viewed); ++i)
        std::cout << "  " << LineOf(i, viewed.header.channels[i]) << '\n';
}

} // namespace

int Info(const Options& options, const std::filesystem::path& file, JsonArray& answers) {
    Mreport::ViewedFile viewed;
    Load(file, viewed);
    const Extent extent = ExtentOf(viewed.pages);
    if (options.json)
        answers.Add(JsonOf(file, viewed, extent));
    else
        Print(file, viewed, extent);
    return extent.cutOff ? notFine : fine;
}

} // namespace tools
