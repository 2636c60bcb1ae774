#pragma once

#include "chem/CalibrationRecord.h"
#include "platform/Printer.h"
#include "report/CalibrationSummary.h"

#include <span>
#include <string_view>

/// The printed calibration summary.
namespace Measure {

/// Prints the summary of a channel (0 to 7) on the system's printer, with a preview. The record
/// holds the points and slopes that the screen shows. Throws RunTimeError when it could not be
/// printed.
platform::PrintOutcome PrintCalibSummary(std::string_view electrode, std::size_t channel,
                                         const CalibrationRecord& record);

/// Prints several summaries (at least one) as one document, a page each.
platform::PrintOutcome PrintCalibSummaries(std::span<const CalibrationSummary::Summary> summaries);

/// The summary's one page.
void DrawCalibSummary(const CalibrationSummary::Summary& summary, platform::Printer& printer);

} // namespace Measure
