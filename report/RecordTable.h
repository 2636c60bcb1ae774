#pragma once

#include "report/PrintRange.h"
#include "report/RunOverview.h"
#include "report/ViewedFile.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Mreport {

/// The records of a viewed file as rows of a compact table: number, time, comment, and each value
/// in a column of its own. Only the rows that are asked for are read, so it costs next to no memory
/// whatever the file's length.
class RecordTable {
public:
    struct Column {
        enum class Kind { number, time, comment, value };
        Kind kind = Kind::number;
        Quantity quantity = Quantity::mV; ///< of a value
        int series = 0;                   ///< of a value: channel (1..8) or sensor (1..4)
        std::string title;                ///< "Record", "Ch. 1 Ca (mV)"
    };

    /// The file must outlive the table.
    explicit RecordTable(const ViewedFile& file) : file_(file) {}

    /// Another file is shown, or what is known of its channels has changed.
    void Reset();

    const std::vector<Column>& Columns() const { return columns_; }

    /// Takes what the file has got since; the number of rows.
    std::int64_t Update();
    std::int64_t Rows() const { return rows_; }

    /// The text of a cell; empty where the record has no value, or could not be read back.
    std::string Text(std::int64_t row, std::size_t column);

    /// Where the record of a row begins in the lists.
    std::optional<LinePlace> PlaceOf(std::int64_t row);

    /// The row of the record that holds this line; nothing before a page's first record.
    std::optional<std::int64_t> RowOf(const LinePlace& place);

    /// The rows of a list page, from the first whose number is in the range to before the first
    /// behind it. Throws RunTimeError where the page has none.
    RecordSpan RowsOf(int page, RecordRange range);

    /// Rows from `first` to before `end` as lines of cells separated by tabs, below the titles of
    /// the columns.
    std::string Copy(std::int64_t first, std::int64_t end, std::span<const std::size_t> columns);

private:
    /// Where the records of a page begin.
    struct PageRecords {
        int page = -1;
        std::size_t linesRead = 0; ///< of the page
        std::vector<std::uint32_t> lines;
    };
    struct Record {
        std::int64_t row = -1;
        std::vector<std::string> cells; ///< by column
    };

    void AddColumn(Quantity quantity, int series);
    const PageRecords& RecordsOf(int page);
    void ReadOn(PageRecords& page) const;
    const Record& Read(std::int64_t row);
    std::vector<std::string> CellsOf(const LinePlace& place, std::size_t endLine) const;
    void TakeRow(std::string_view line, std::vector<std::string>& cells) const;
    std::string CellOf(const Column& column, const MeasurementLines::Cells& cells) const;

    const ViewedFile& file_;
    std::vector<Column> columns_;
    std::int64_t rows_ = 0;
    std::deque<PageRecords> pages_; ///< used latest in front
    std::deque<Record> records_;    ///< read latest in front
};

} // namespace Mreport
