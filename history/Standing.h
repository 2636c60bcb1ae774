#pragma once

#include "chem/CalibrationRecord.h"
#include "history/CalibrationEntry.h"

#include <cstddef>
#include <optional>
#include <string>

namespace History {

/// How a calibration stands against the one before of the same electrode.
struct Standing {
    std::string text; ///< "97.0 %, 1.2 % less than 3 days ago"; empty where nothing can be told
    bool usual = true;
};

/// `percent` is of theory; without a calibration before, it is told alone.
Standing StandingOf(const std::optional<float>& percent, const std::optional<PastCalibration>& last,
                    const LocalTime& now);

/// Of a record of a channel (0-based) that is not stored yet, against what the installed history
/// has last; nothing where none is installed or none can be read.
Standing StandingOf(std::size_t channel, const CalibrationRecord& record);

} // namespace History
