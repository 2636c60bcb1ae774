#include "report/RecordCells.h"

#include "report/ByteCount.h"

#include <algorithm>

namespace Mreport {

bool RecordCells::Take(std::string_view rows, const RecordLayout& layout) {
    text_ = rows;
    if (known_ && StandAsBefore(rows))
        return true;
    Learn(rows, layout);
    return false;
}

std::span<const RowCells> RecordCells::Rows() {
    for (std::size_t row = 0; row < rows_.size(); ++row)
        CutRow(rows_[row], cells_[row].cells);
    return cells_;
}

/// As many tabs as before, each in its place: none stands elsewhere.
bool RecordCells::StandAsBefore(std::string_view rows) const {
    return std::ranges::all_of(tabs_, [rows](std::size_t tab) { return rows[tab] == '\t'; }) &&
           CountOf('\t', rows) == tabs_.size();
}

void RecordCells::Learn(std::string_view rows, const RecordLayout& layout) {
    tabs_.clear();
    rows_.clear();
    cells_.clear();
    std::size_t begin = 0;
    for (const RecordLayout::Row& row : layout.Rows()) {
        const std::size_t end = begin + row.length;
        const auto quantity = MeasurementLines::QuantityOf(rows.substr(begin, row.length));
        if (quantity) {
            rows_.push_back({tabs_.size(), end});
            cells_.push_back({*quantity, {}});
        }
        for (std::size_t tab = rows.find('\t', begin); tab < end; tab = rows.find('\t', tab + 1))
            tabs_.push_back(tab);
        begin = end;
    }
    known_ = true;
}

void RecordCells::CutRow(const Row& row, MeasurementLines::Cells& cells) const {
    const std::string_view text = MeasurementLines::WithoutLineEnd(text_.substr(0, row.end));
    cells.count = 0;
    for (std::size_t i = row.firstTab; i < tabs_.size() && tabs_[i] < row.end; ++i) {
        if (cells.count == maxChannels)
            return;
        const std::size_t begin = tabs_[i] + 1;
        const std::size_t end =
            i + 1 < tabs_.size() && tabs_[i + 1] < text.size() ? tabs_[i + 1] : text.size();
        cells.cell[cells.count++] = text.substr(begin, end - begin);
    }
}

} // namespace Mreport
