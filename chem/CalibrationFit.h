#pragma once

#include "chem/CalibrationRecord.h"

#include <optional>
#include <string_view>

/// One line through all points of a calibration, by least squares: what is compared from one
/// calibration of an electrode to the next. It converts no reading.
struct CalibrationFit {
    std::optional<float> slope;     ///< mV/pH or mV/decade, as displayed
    std::optional<float> percent;   ///< of theory, where that is known
    std::optional<float> offset_mV; ///< at pH 7, or at a concentration of 1 in the record's unit
};

/// Nothing where the points give no line.
CalibrationFit FitOf(const CalibrationRecord& record, std::string_view electrode);
