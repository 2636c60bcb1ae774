#pragma once

#include "history/CalibrationEntry.h"
#include "report/CsvExport.h"

#include <filesystem>
#include <span>
#include <string>

namespace Mreport {

/// What of the history a table shows, as CSV by the rules of the export of records: UTF-8,
/// comma-separated, CR LF, times as ISO 8601.
std::string CalibrationsCsv(std::span<const History::PastCalibration> calibrations);
std::string EventsCsv(std::span<const History::NumberedEntry> events);

/// Puts it into a file. Throws RunTimeError; an older file of that name then stays.
void SaveCsv(const std::filesystem::path& file, const std::string& csv, CsvReader reader);

} // namespace Mreport
