#pragma once

#include "base/Quantity.h"
#include "files/MeasurementLines.h"
#include "report/RecordLayout.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace Mreport {

/// A row of values with its cells, which live as long as the text that they were cut from.
struct RowCells {
    Quantity quantity{};
    MeasurementLines::Cells cells;
};

/// Cuts the rows of records that have one layout into cells. Their tabs mostly stand where those of
/// the record before stood, so that they are compared instead of being looked for.
class RecordCells {
public:
    /// The layout has changed.
    void Forget() { known_ = false; }

    /// The next record's rows, which have the layout's lengths, with their line ends. True where
    /// the cells stand as those of the rows before.
    bool Take(std::string_view rows, const RecordLayout& layout);

    /// Of the rows taken last: those that have a quantity, in their order. Until the next call.
    std::span<const RowCells> Rows();

private:
    /// Where the cells of a row stand.
    struct Row {
        std::size_t firstTab = 0; ///< in tabs_
        std::size_t end = 0;      ///< behind its line end
    };

    void Learn(std::string_view rows, const RecordLayout& layout);
    bool StandAsBefore(std::string_view rows) const;
    void CutRow(const Row& row, MeasurementLines::Cells& cells) const;

    std::string_view text_; ///< of the rows taken last
    bool known_ = false;
    std::vector<std::size_t> tabs_; ///< of all rows, from the first row's beginning on
    std::vector<Row> rows_;         ///< those that have a quantity
    std::vector<RowCells> cells_;   ///< of the same rows
};

} // namespace Mreport
