#pragma once

#include "chem/CalibrationRecord.h"
#include "platform/Printer.h"

#include <cstdint>
#include <string>

/// The printed calibration summary.
namespace Measure {

/// What a summary tells. The record holds the points and slopes that the screen shows.
struct CalibSummary {
    std::string electrode;
    std::int16_t channel = 0; ///< 0 to 7
    CalibrationRecord record;
};

/// Prints the summary on the system's printer, with a preview. Throws RunTimeError when it could
/// not be printed.
platform::PrintOutcome PrintCalibSummary(const CalibSummary& summary);

/// The summary's one page.
void DrawCalibSummary(const CalibSummary& summary, platform::Printer& printer);

} // namespace Measure
