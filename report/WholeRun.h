#pragma once

#include "report/RunOverview.h"
#include "report/ViewedFile.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Mreport {

/// The run of a viewed file, as overview, span, statistics and search take it.
namespace WholeRun {

/// The list pages, up to the last whole line.
std::vector<RunPiece> Pieces(const ReportPages& pages);

std::int64_t Records(const ReportPages& pages);

/// Numbers of the channels (1..8) or, for degrees, of the sensors (1..4) that can have values in
/// this quantity, selected or not.
std::vector<int> Series(const ViewedFile& file, Quantity quantity);

/// The quantities that have a series.
std::vector<Quantity> QuantitiesOf(const ViewedFile& file);

/// The columns that give each of these series.
std::vector<SeriesColumns> ColumnsOf(const ViewedFile& file, Quantity quantity,
                                     const std::vector<int>& series);

ScanWish Wish(const ViewedFile& file, Quantity quantity);

/// "Ch. 1", "Temp. 1".
std::string SeriesName(Quantity quantity, int number);

/// Where a record of the run stands in the lists.
struct ListPlace {
    int page = 0;
    std::int64_t inPage = 0; ///< 0 is the page's first record
};
std::optional<ListPlace> PlaceInLists(const ReportPages& pages, std::int64_t place);

/// The place of a page's first record in the run.
std::int64_t FirstOfPage(const ReportPages& pages, int page);

} // namespace WholeRun

} // namespace Mreport
