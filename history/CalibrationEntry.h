#pragma once

#include "history/Entry.h"

#include <optional>
#include <string>

namespace History {

/// The entry of a channel's stored calibration (0-based), without the moment and who is at work.
Entry EntryOfCalibration(std::size_t channel, const std::string& temperature_celsius);

/// A calibration as the history gives it back.
struct PastCalibration {
    LocalTime at;
    std::optional<int> channel; ///< 0-based
    std::string electrode, serialNo;
    std::string reference, referenceSerialNo;
    std::string unit;                   ///< "pH", "ppm" or "mol/l"
    std::string points;                 ///< "10 -55.3; 100 2.1": standard and mV
    std::string slopes;                 ///< "57.4", as displayed, in mV/pH or mV/decade
    std::optional<float> slope_percent; ///< of the line through all points, of theory
    std::optional<float> offset_mV;     ///< of that line at pH 7 or at a concentration of 1
    std::string temperature_celsius;    ///< as displayed
    std::string analyst;
};

PastCalibration CalibrationOf(const Entry& entry);

} // namespace History
