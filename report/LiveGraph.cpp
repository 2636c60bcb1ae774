#include "report/LiveGraph.h"

#include "app/Mcommon.h"
#include "files/MeasurementLines.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr std::size_t liveMargin = 9;

int PointInBlock(std::int32_t record) {
    return (record - 1) % spanLength + 1;
}

/// The values of the graph's newest record, as the list has them.
SeriesValues NewestValues(const ViewedFile& file, const ShownGraph& shown,
                          const std::vector<int>& series) {
    SeriesValues values(series.size());
    const int page = shown.graphPageIndex;
    const auto range = file.pages.Records(page);
    if (!range)
        return values;
    const auto take = [&](RecordWalk::Step step, std::string_view line) {
        if (step != RecordWalk::Step::row || MeasurementLines::QuantityOf(line) != shown.unitCode)
            return true;
        values = ValuesOf(file, shown.unitCode, line, series);
        return false;
    };
    file.pages.ForEachLineOfRecord(page, range->lastLine, take);
    return values;
}

} // namespace

void DynResetGraph(ReportGraph& graph, FileRecord record) {
    Mcommon::errorLocation = "DynResetGraph";
    graph.SetDataReset(graph::resetAllData);
    graph.SetNumPoints(spanLength);
    graph.SetTickEvery(TickEvery(spanLength));
    FillUp(graph, {1, spanLength, record, TickEvery(spanLength)});
}

DrawnSpan DynUpdate(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown,
                    FileRecord record) {
    Mcommon::errorLocation = "DynUpdate";
    const std::int32_t number = std::max(record.number, 1);
    const int point = PointInBlock(number);
    if (number <= spanLength) {
        if (number == 1)
            graph.SetDataReset(graph::resetAllData);
        graph.SetNumPoints(number);
    } else if (point == 1) {
        DynResetGraph(graph, {number});
    }
    const auto series = Series(file, shown);
    WriteLegends(graph, shown.unitCode, series);
    const bool labelled = point == 1 || number <= spanLength || number % TickEvery(spanLength) == 0;
    LabelPoint(graph, point, number, labelled);
    PlotPoint(graph, point, NewestValues(file, shown, series));
    graph.SetDrawMode(graph::draw);
    return {{number - point + 1}, point};
}

bool PageIsFull(const ReportPages& pages) {
    return pages.LineCount(pages.Last()) + liveMargin >= maxPageLines + 1;
}

} // namespace Mreport
