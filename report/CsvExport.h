#pragma once

#include "report/CsvLines.h"
#include "report/RunOverview.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Mreport {

struct ViewedFile;

enum class CsvReader {
    any,
    spreadsheet, ///< knows UTF-8 by the byte order mark alone
};

/// What is written: for whom, and which records.
struct CsvWish {
    CsvWish(CsvReader wanted = CsvReader::any) : reader(wanted) {}

    CsvReader reader;
    std::optional<RecordSpan> span; ///< all where it is not told
};

/// Writes the records of the list pages as CSV: UTF-8, comma-separated, CR LF, a heading with
/// electrodes and units, one row a record, the time as ISO 8601, an empty cell for a missing value.
/// Lets events run; `stop` is asked after them. Returns the number of records, nothing where it was
/// stopped. Throws RunTimeError where the file can no longer be read as it was loaded.
std::optional<std::int32_t> WriteCsv(const ViewedFile& viewed, const CsvWish& wish,
                                     const CsvSink& sink, const std::function<bool()>& stop);

/// The same into a file. A stopped export leaves no file and returns 0. Throws RunTimeError when
/// the file cannot be written; an older file of that name then stays.
std::int32_t ExportCsv(const ViewedFile& viewed, const std::filesystem::path& file,
                       const CsvWish& wish, const std::function<bool()>& stop);

} // namespace Mreport
