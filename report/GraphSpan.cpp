#include "report/GraphSpan.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <limits>

namespace Mreport {

namespace {

constexpr std::int32_t pointsPerTick = 55;
constexpr std::int32_t tickStep = 5;

/// The value of a series in a row of its unit.
std::optional<double> ValueOf(const ViewedFile& file, Quantity unit,
                              const MeasurementLines::Cells& cells, int number) {
    if (Quantities::IsOfSensors(unit)) {
        const auto cell = file.SensorCell(cells, number);
        return cell ? CellValue(*cell) : std::nullopt;
    }
    const auto cell = cells.OfChannel(number);
    return cell ? CellValue(*cell) : std::nullopt;
}

/// Plots the records of one span as their lines come.
class SpanWalk {
public:
    struct Limits {
        std::int32_t leading = 0; ///< points of the live block that lie before the page
        std::int32_t capacity = 0;
        int tickEvery = 1;
    };

    SpanWalk(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown,
             const Limits& limits)
        : graph_(graph), file_(file), unit_(shown.unitCode), limits_(limits),
          series_(Series(file, shown)), point_(limits.leading) {}

    /// False when the span is complete.
    bool TakeLine(std::string_view line) {
        switch (walk_.Take(line)) {
        case RecordWalk::Step::begins:
            return StartRecord();
        case RecordWalk::Step::row:
            if (MeasurementLines::QuantityOf(line) == unit_)
                values_ = ValuesOf(file_, unit_, line, series_);
            return true;
        case RecordWalk::Step::ends:
            CloseRecord();
            return point_ < limits_.capacity;
        case RecordWalk::Step::other:
        case RecordWalk::Step::separator:
            break;
        }
        return true;
    }

    /// Writes the record at hand.
    void CloseRecord() {
        if (inRecord_) // a record without a line of this unit has a point, but no value
            PlotPoint(graph_, point_, values_);
        inRecord_ = false;
    }

    std::int32_t Filled() const { return point_; }

private:
    bool StartRecord() {
        CloseRecord();
        if (point_ >= limits_.capacity)
            return false;
        ++point_;
        inRecord_ = true;
        values_.assign(series_.size(), std::nullopt);
        const bool first = point_ == limits_.leading + 1;
        if (first)
            WriteLegends(graph_, unit_, series_);
        const std::int32_t record = walk_.Number();
        LabelPoint(graph_, point_, record, first || record % limits_.tickEvery == 0);
        return true;
    }

    ReportGraph& graph_;
    const ViewedFile& file_;
    Quantity unit_;
    Limits limits_;
    std::vector<int> series_;
    RecordWalk walk_;
    std::int32_t point_;
    SeriesValues values_;
    bool inRecord_ = false;
};

/// The line of a record, looked for where records of equal length put it, then from the top.
std::optional<ReportPages::Line> LineOf(const ReportPages& pages, int page, std::int32_t record,
                                        std::int32_t offset) {
    const std::int64_t before = std::int64_t{record} - offset - 1;
    const auto near = static_cast<ReportPages::Line>(std::max<std::int64_t>(before, 0) *
                                                     CountLinesPerRecord(pages));
    if (const auto found = pages.FindRecord(page, record, near))
        return found;
    return near == 0 ? std::nullopt : pages.FindRecord(page, record);
}

std::int32_t FirstOfBlock(std::int32_t record) {
    return record - (record - 1) % spanLength;
}

/// Where a span lies in its page.
struct Place {
    std::int32_t offset = 0; ///< number of the page's first record less 1
    std::int32_t first = 1;  ///< record that the first point stands for
    std::int32_t end = 1;    ///< and the last one
    std::int32_t leading = 0;
};

Place PlaceOf(const ReportPages& pages, const Span& span) {
    Place place;
    if (pages.Records(span.page))
        place.offset = PageRecordRange(pages, span.page).pageFirstRecordOffset;
    const std::int64_t end = std::int64_t{span.endRecord.number} + place.offset;
    place.end = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(end, 1, std::numeric_limits<std::int32_t>::max()));
    if (span.fromLive) {
        place.first = FirstOfBlock(place.end);
        place.leading = std::max(place.offset + 1 - place.first, 0);
    } else {
        place.first = static_cast<std::int32_t>(
            std::clamp<std::int64_t>(end - span.numPoints + 1, std::int64_t{place.offset} + 1,
                                     std::numeric_limits<std::int32_t>::max()));
    }
    return place;
}

bool NeedsFillers(const Span& span, std::int32_t filled, bool autoUpdate) {
    return span.fromLive || (span.numPoints == spanLength && filled < spanLength) ||
           span.numPoints < graph::smallestPointCount || autoUpdate;
}

std::int32_t WalkSpan(SpanWalk& walk, const ReportPages& pages, const Span& span,
                      const Place& place) {
    const auto line = LineOf(pages, span.page, place.first + place.leading, place.offset);
    if (!line)
        return 0;
    pages.ForEachLine(
        span.page, *line, pages.LineCount(span.page),
        [&walk](ReportPages::Line, std::string_view text) { return walk.TakeLine(text); });
    walk.CloseRecord();
    return walk.Filled();
}

} // namespace

int TickEvery(std::int32_t numPoints) {
    std::int32_t spacing = numPoints / pointsPerTick + 1;
    if (spacing != 1) // a multiple of 5 is raised by a full step, too
        spacing += tickStep - spacing % tickStep;
    return spacing;
}

std::optional<double> CellValue(std::string_view cell) {
    const std::string text = Mcommon::TrimControl(cell);
    if (MeasurementLines::IsMissing(text))
        return std::nullopt;
    return NumberText::Leading(text);
}

SeriesValues ValuesOf(const ViewedFile& file, Quantity unit, std::string_view valueLine,
                      const std::vector<int>& series) {
    const auto cells = MeasurementLines::SplitCells(valueLine);
    SeriesValues values;
    for (const int number : series)
        values.push_back(ValueOf(file, unit, cells, number));
    return values;
}

void WriteLegends(ReportGraph& graph, Quantity unit, const std::vector<int>& series) {
    const bool sensors = unit == Quantity::celsius;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto set = static_cast<int>(i + 1);
        graph.SetThisSet(set);
        graph.SetStyle(set, series[i] - 1);
        graph.SetLegend(set, (sensors ? "Temp. " : "Ch. ") + std::to_string(series[i]));
    }
}

void PlotPoint(ReportGraph& graph, int point, const SeriesValues& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        graph.SetThisSet(static_cast<int>(i + 1));
        graph.SetData(point, values[i].value_or(0));
        graph.SetExtra(point, values[i] ? graph::valuePoint : graph::fillerPoint);
    }
}

void LabelPoint(ReportGraph& graph, int point, std::int64_t record, bool labelled) {
    graph.SetXAxisMinorTicks(labelled ? 0 : 1);
    graph.SetLabel(point, labelled ? std::to_string(record) : std::string());
}

void FillUp(ReportGraph& graph, const Fillers& fillers) {
    for (std::int32_t point = fillers.from; point <= fillers.to; ++point) {
        LabelPoint(graph, point, std::int64_t{fillers.firstRecord.number} + point - 1,
                   point % fillers.tickEvery == 0);
        for (std::int32_t set = 1; set <= graph.NumSets(); ++set) {
            graph.SetThisSet(set);
            graph.SetExtra(point, graph::fillerPoint);
        }
    }
}

std::string PointText(Quantity unit, int number, std::int64_t record, double value,
                      NumberText::Pattern pattern) {
    // Numbers stand behind one blank, the place of a sign.
    const std::string what = Quantities::IsOfSensors(unit) ? "Temp. " : "Chan. ";
    return what + std::to_string(number) + ", Record " + std::to_string(record) +
           ", Value =" + NumberText::Format(static_cast<float>(value), pattern);
}

std::string PointInfo(Quantity unit, int number, std::int64_t record, double value) {
    const bool small = Quantities::Of(unit).pattern == NumberText::Pattern::scientific;
    return PointText(unit, number, record, value,
                     small ? NumberText::Pattern::scientific : NumberText::Pattern::twoDecimals);
}

std::string EmptyGraphText(const ViewedFile& file, const ShownGraph& shown) {
    const std::string unit = UnitText(shown.unitCode);
    const bool sensors = Quantities::IsOfSensors(shown.unitCode);
    if (GraphRange(file, shown).recordsInPage == 0)
        return "There is no record to show yet.";
    if (!Givable(file, shown.unitCode))
        return sensors ? std::string("No channel of this file has a temperature sensor.")
                       : "No channel of this file gives " + unit + ".";
    if (Series(file, shown).empty())
        return sensors ? "No temperature sensor is selected." : "No channel is selected.";
    return "These records hold no value in " + unit + " of what is selected.";
}

DrawnSpan DrawSpan(ReportGraph& graph, const ReportGraph& formGraph, const ViewedFile& file,
                   const ShownGraph& shown, const Span& span) {
    Mcommon::errorLocation = "UpdateGraph";
    const std::int32_t asked = std::clamp(span.numPoints, 0, maxGraphPoints);
    const Span bounded{span.page, span.endRecord, asked, span.fromLive};
    graph.SetNumSets(formGraph.NumSets());
    graph.SetNumPoints(asked);
    graph.SetLeftTitle(UnitText(shown.unitCode));
    graph.SetDataReset(graph::resetAllData);
    graph.SetTickEvery(TickEvery(asked));

    const Place place = PlaceOf(file.pages, bounded);
    const std::int32_t capacity =
        span.fromLive ? std::min(place.end - place.first + 1, spanLength) : asked;
    SpanWalk walk(graph, file, shown, {place.leading, capacity, TickEvery(asked)});
    const std::int32_t filled = WalkSpan(walk, file.pages, bounded, place);
    if (NeedsFillers(bounded, filled, shown.autoUpdate)) {
        const int points = std::max({graph::smallestPointCount, asked, filled});
        graph.SetNumPoints(points);
        const int spacing = TickEvery(asked);
        FillUp(graph, {1, filled == 0 ? 0 : place.leading, {place.first}, spacing});
        FillUp(graph, {filled + 1, points, {place.first}, spacing});
    }
    graph.SetDrawMode(graph::draw);
    return {{place.first}, filled};
}

DrawnSpan UpdateGraph(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown,
                      const Span& span) {
    return DrawSpan(graph, graph, file, shown, span);
}

DrawnSpan InitGraphDraw(ReportGraph& graph, const ViewedFile& file, const ShownGraph& shown) {
    Mcommon::errorLocation = "InitGraphDraw";
    const std::int32_t records = std::min(spanLength, GraphRange(file, shown).recordsInPage);
    return UpdateGraph(graph, file, shown, {shown.graphPageIndex, {records}, records});
}

} // namespace Mreport
