#pragma once

#include "base/NumberText.h"
#include "report/ReportGraph.h"
#include "report/ShownGraph.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Mreport {

/// Spacing of the labelled points of a span: every point up to 54 points, then multiples of 5.
int TickEvery(std::int32_t numPoints);

/// What a drawing shows.
struct DrawnSpan {
    FileRecord firstRecord{1}; ///< that point 1 stands for
    std::int32_t points = 0;   ///< points with a record
};

/// Records of one list page that a graph shows.
struct Span {
    int page = 0;
    PageRecord endRecord; ///< the last one
    std::int32_t numPoints = spanLength;
    bool fromLive = false; ///< in the live graph's block of 50, not as a sliding span
};

/// Draws the span in the unit and the channels that are shown. The number of sets comes from
/// `formGraph`, the viewer's own graph, which may be the same as `graph`. A span whose first record
/// is not in the page draws no points.
DrawnSpan DrawSpan(ReportGraph& graph, const ReportGraph& formGraph, const ViewedFile& file,
                   const ShownGraph& shown, const Span& span);

/// Redraws the viewer's graph with records of its page.
DrawnSpan UpdateGraph(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown,
                      const Span& span);

/// First drawing after a file is opened.
DrawnSpan InitGraphDraw(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown);

/// The value of a cell; nothing for a missing one ("NA", "N/A", blank).
std::optional<double> CellValue(std::string_view cell);

/// Values of a record's value line in this unit, one per series.
using SeriesValues = std::vector<std::optional<double>>;
SeriesValues ValuesOf(const ViewedFile& file, Quantity unit, std::string_view valueLine,
                      const std::vector<int>& series);

/// Writes the legends of the series of a unit.
void WriteLegends(ReportGraph& graph, Quantity unit, const std::vector<int>& series);

/// Writes one point of every series; a missing value becomes a filler point.
void PlotPoint(ReportGraph& graph, int point, const SeriesValues& values);

/// Writes a point's label: the record number, or an empty one.
void LabelPoint(ReportGraph& graph, int point, std::int64_t record, bool labelled);

/// Completes the points from `from` to `to`: labels by the point number, and a mark in every set
/// that tells that they carry no value.
struct Fillers {
    int from = 1;
    int to = 0;
    FileRecord firstRecord{1}; ///< that point 1 stands for
    int tickEvery = 1;
};
void FillUp(ReportGraph& graph, const Fillers& fillers);

/// Text of the point click box: channel or sensor, record and value.
std::string PointText(Quantity unit, int number, std::int64_t record, double value,
                      NumberText::Pattern pattern = NumberText::Pattern::twoDecimals);

/// The same for the information line, where a small concentration stays readable.
std::string PointInfo(Quantity unit, int number, std::int64_t record, double value);

/// Why a graph without any value shows none.
std::string EmptyGraphText(const ViewedFile& file, const ShownGraph& shown);

} // namespace Mreport
