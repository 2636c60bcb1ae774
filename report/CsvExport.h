#pragma once

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

/// Takes the text of a CSV file, block by block.
using CsvSink = std::function<void(std::string_view)>;

/// Writes the records of the list pages as CSV: UTF-8, comma-separated, CR LF, a heading with
/// electrodes and units, one row a record, the time as ISO 8601, an empty cell for a missing value.
/// Lets events run; `stop` is asked after them. Returns the number of records, nothing where it was
/// stopped.
std::optional<std::int32_t> WriteCsv(const ViewedFile& viewed, const CsvWish& wish,
                                     const CsvSink& sink, const std::function<bool()>& stop);

/// The same into a file. A stopped export leaves no file and returns 0. Throws RunTimeError when
/// the file cannot be written; an older file of that name then stays.
std::int32_t ExportCsv(const ViewedFile& viewed, const std::filesystem::path& file,
                       const CsvWish& wish, const std::function<bool()>& stop);

/// "14:05:33 07.Mar.2026" as "2026-03-07T14:05:33"; any other text as it is.
std::string IsoTime(std::string_view timeStamp);

/// A CSV field, quoted where it must be.
std::string CsvField(std::string_view utf8);

} // namespace Mreport
