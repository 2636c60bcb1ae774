#include "report/RecordTable.h"

#include "base/Letters.h"
#include "base/RunTimeError.h"
#include "report/WholeRun.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr std::size_t pagesKept = 3; // a shown span may lie on two
constexpr std::size_t recordsKept = 4;

/// Cells of free text must not look like several.
std::string OneCell(std::string text) {
    std::ranges::replace(text, '\t', ' ');
    return text;
}

} // namespace

void RecordTable::Reset() {
    using Kind = Column::Kind;
    pages_.clear();
    records_.clear();
    columns_ = {{Kind::number, Quantity::mV, 0, "Record"},
                {Kind::time, Quantity::mV, 0, "Time"},
                {Kind::comment, Quantity::mV, 0, "Comment"}};
    for (const Quantity quantity : WholeRun::QuantitiesOf(file_))
        for (const int series : WholeRun::Series(file_, quantity))
            AddColumn(quantity, series);
    Update();
}

/// "Ch. 1 Ca (mV)", "Temp. 2 (°C)".
void RecordTable::AddColumn(Quantity quantity, int series) {
    std::string title = WholeRun::SeriesName(quantity, series);
    if (!Quantities::IsOfSensors(quantity))
        if (const auto& electrode =
                file_.header.channels[static_cast<std::size_t>(series - 1)].electrode;
            !electrode.empty())
            title += " " + electrode;
    title += " (" + std::string(Quantities::Label(quantity)) + ")";
    columns_.push_back({Column::Kind::value, quantity, series, std::move(title)});
}

std::int64_t RecordTable::Update() {
    rows_ = WholeRun::Records(file_.pages);
    records_.clear(); // the last record may have got its rows
    return rows_;
}

/// Finding the records of a page takes a walk over its text, some milliseconds; the pages used last
/// are kept, and a page that grows is read on.
const RecordTable::PageRecords& RecordTable::RecordsOf(int page) {
    const auto known = std::ranges::find(pages_, page, &PageRecords::page);
    if (known == pages_.end()) {
        pages_.push_front({page, 0, {}});
        if (pages_.size() > pagesKept)
            pages_.pop_back();
    } else {
        std::rotate(pages_.begin(), known, known + 1);
    }
    ReadOn(pages_.front());
    return pages_.front();
}

void RecordTable::ReadOn(PageRecords& page) const {
    if (page.linesRead == file_.pages.LineCount(page.page) ||
        static_cast<std::int64_t>(page.lines.size()) == file_.pages.RecordCount(page.page))
        return;
    // Anew from the last record on, whose lines may have been completed.
    const ReportPages::Line from = page.lines.empty() ? 0 : page.lines.back();
    if (!page.lines.empty())
        page.lines.pop_back();
    RecordWalk walk;
    file_.pages.ForEachLine(page.page, from, file_.pages.LineCount(page.page),
                            [&](ReportPages::Line line, std::string_view text) {
                                if (walk.Take(text) == RecordWalk::Step::begins && line > 0)
                                    page.lines.push_back(static_cast<std::uint32_t>(line - 1));
                                return true;
                            });
    page.linesRead = file_.pages.LineCount(page.page);
}

std::optional<LinePlace> RecordTable::PlaceOf(std::int64_t row) {
    const auto at = WholeRun::PlaceInLists(file_.pages, row);
    if (!at || row >= rows_)
        return std::nullopt;
    const PageRecords& records = RecordsOf(at->page);
    if (at->inPage >= std::ssize(records.lines)) // the file has shrunk
        return std::nullopt;
    return LinePlace{at->page, *(records.lines.begin() + at->inPage)};
}

std::optional<std::int64_t> RecordTable::RowOf(const LinePlace& place) {
    if (place.page < 0 || place.page >= file_.pages.Count())
        return std::nullopt;
    const auto& lines = RecordsOf(place.page).lines;
    const auto behind = std::ranges::upper_bound(lines, place.line);
    if (behind == lines.begin())
        return std::nullopt;
    const std::int64_t row =
        WholeRun::FirstOfPage(file_.pages, place.page) + (behind - lines.begin()) - 1;
    return row < rows_ ? std::optional(row) : std::nullopt;
}

std::string RecordTable::Text(std::int64_t row, std::size_t column) {
    const Record& record = Read(row);
    return column < record.cells.size() ? record.cells[column] : std::string();
}

/// A table asks for the cells of a row one after the other.
const RecordTable::Record& RecordTable::Read(std::int64_t row) {
    const auto known = std::ranges::find(records_, row, &Record::row);
    if (known != records_.end())
        return *known;
    Record record{row, {}};
    if (const auto place = PlaceOf(row)) {
        const auto next = PlaceOf(row + 1);
        const bool onPage = next && next->page == place->page;
        record.cells = CellsOf(*place, onPage ? next->line : file_.pages.LineCount(place->page));
    }
    records_.push_front(std::move(record));
    if (records_.size() > recordsKept)
        records_.pop_back();
    return records_.front();
}

std::vector<std::string> RecordTable::CellsOf(const LinePlace& place, std::size_t endLine) const {
    std::vector<std::string> cells(columns_.size());
    RecordWalk walk;
    file_.pages.ForEachLine(
        place.page, place.line, endLine, [&](ReportPages::Line, std::string_view text) {
            const RecordWalk::Step step = walk.Take(text);
            if (step == RecordWalk::Step::begins) {
                cells[0] = std::to_string(walk.Number());
                cells[1] = OneCell(Letters::TrimControl(walk.TimeStamp()));
                cells[2] = OneCell(Letters::TrimControl(MeasurementLines::CommentText(text)));
            } else if (step == RecordWalk::Step::row) {
                TakeRow(text, cells);
            }
            return step != RecordWalk::Step::ends;
        });
    return cells;
}

void RecordTable::TakeRow(std::string_view line, std::vector<std::string>& cells) const {
    const auto quantity = MeasurementLines::QuantityOf(line);
    if (!quantity)
        return;
    const auto found = MeasurementLines::SplitCells(line);
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].kind == Column::Kind::value && columns_[i].quantity == *quantity)
            cells[i] = CellOf(columns_[i], found);
}

std::string RecordTable::CellOf(const Column& column, const MeasurementLines::Cells& cells) const {
    if (Quantities::IsOfSensors(column.quantity))
        return std::string(file_.SensorCell(cells, column.series).value_or(""));
    const std::string text = Letters::TrimControl(cells.OfChannel(column.series).value_or(""));
    return MeasurementLines::IsMissing(text) ? std::string() : text;
}

RecordSpan RecordTable::RowsOf(int page, RecordRange range) {
    const std::int64_t pageRow = WholeRun::FirstOfPage(file_.pages, page);
    const std::int64_t pageEnd = pageRow + file_.pages.RecordCount(page);
    const auto number = [this](std::int64_t row) { return TypedRecordNumber(Text(row, 0)); };
    RecordSpan rows{pageRow, pageRow};
    while (rows.first < pageEnd &&
           (number(rows.first) < range.first || number(rows.first) > range.last))
        ++rows.first;
    if (rows.first == pageEnd)
        throw RunTimeError("The list holds no record from " + std::to_string(range.first) + " to " +
                           std::to_string(range.last));
    for (rows.end = rows.first; rows.end < pageEnd && number(rows.end) <= range.last;)
        ++rows.end;
    return rows;
}

std::string RecordTable::Copy(std::int64_t first, std::int64_t end,
                              std::span<const std::size_t> columns) {
    std::string text;
    const auto addLine = [&text, columns](auto cellOf) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            text += (i > 0 ? "\t" : "") + cellOf(columns[i]);
        text += '\n';
    };
    addLine([this](std::size_t column) { return columns_[column].title; });
    for (std::int64_t row = first; row < end; ++row)
        addLine([this, row](std::size_t column) { return Text(row, column); });
    return text;
}

} // namespace Mreport
