#include "report/LiveGraph.h"

#include "app/Mcommon.h"
#include "files/MeasurementLines.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr std::size_t liveMargin = 9;

std::int16_t PointInBlock(std::int32_t record) {
    return static_cast<std::int16_t>((record - 1) % spanLength + 1);
}

SeriesValues GivenValues(const std::vector<int>& series,
                         const std::array<float, maxChannels>& values) {
    SeriesValues given;
    for (const int number : series)
        given.emplace_back(values[static_cast<std::size_t>(number - 1)]);
    return given;
}

/// Takes away the values that the record in the list shows as missing.
void DropIdle(SeriesValues& values, const std::vector<int>& series, std::int32_t record) {
    const int page = graphPageIndex;
    const auto range = pages.Records(page);
    if (!range || range->last != record)
        return;
    pages.ForEachLine(page, range->lastLine, pages.LineCount(page),
                      [&](ReportPages::Line, std::string_view line) {
                          if (MeasurementLines::QuantityOf(line) != unitCode)
                              return true;
                          const auto shown = ValuesOf(line, series);
                          for (std::size_t i = 0; i < shown.size(); ++i)
                              if (!shown[i])
                                  values[i].reset();
                          return false;
                      });
}

} // namespace

void DynResetGraph(ReportGraph& graph, std::int32_t record) {
    Mcommon::errorLocation = "DynResetGraph";
    graph.SetDataReset(graph::resetAllData);
    graph.SetNumPoints(static_cast<std::int16_t>(spanLength));
    graph.SetTickEvery(TickEvery(spanLength));
    FillUp(graph, {1, static_cast<std::int16_t>(spanLength), record, TickEvery(spanLength)});
}

DrawnSpan DynUpdate(ReportGraph& graph, std::int32_t record,
                    const std::array<float, maxChannels>& values) {
    Mcommon::errorLocation = "DynUpdate";
    record = std::max(record, 1);
    recordsInPage = std::max(record - pageFirstRecordOffset, 0);
    const std::int16_t point = PointInBlock(record);
    if (record <= spanLength) {
        if (record == 1)
            graph.SetDataReset(graph::resetAllData);
        graph.SetNumPoints(static_cast<std::int16_t>(record));
    } else if (point == 1) {
        DynResetGraph(graph, record);
    }
    const auto series = Series(unitCode);
    WriteLegends(graph, series);
    const bool labelled = point == 1 || record <= spanLength || record % TickEvery(spanLength) == 0;
    LabelPoint(graph, point, record, labelled);
    SeriesValues shown = GivenValues(series, values);
    DropIdle(shown, series, record);
    PlotPoint(graph, point, shown);
    graph.SetDrawMode(graph::draw);
    return {record - point + 1, point};
}

bool PageIsFull() {
    return pages.LineCount(lastPageIndex) + liveMargin >= maxPageLines + 1;
}

void ContinueOnNewPage(std::int32_t record) {
    graphPageIndex = shownPageIndex = lastPageIndex;
    pageFirstRecordOffset = record;
    recordsInPage = 0;
}

} // namespace Mreport
