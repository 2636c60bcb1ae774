#pragma once

#include "history/CalibrationEntry.h"
#include "history/Log.h"

#include <string>
#include <vector>

/// What the history's screen asks of it. All throw RunTimeError where it cannot be read.
namespace History {

/// An electrode that was calibrated, by its name and serial number.
struct KnownElectrode {
    std::string electrode, serialNo;

    bool operator==(const KnownElectrode&) const = default;
};

/// Each once, in the order of their last calibration, the latest first.
std::vector<KnownElectrode> CalibratedElectrodes(Log& log);

/// In the order of time.
std::vector<PastCalibration> CalibrationsOf(Log& log, const KnownElectrode& electrode);

/// The last calibration of the electrode; nothing where there was none.
std::optional<PastCalibration> LastCalibrationOf(Log& log, const KnownElectrode& electrode);

/// The events that a wish takes and in which the text stands, wherever, without regard to case.
std::vector<NumberedEntry> EventsWith(Log& log, const Wish& wish, const std::string& text);

} // namespace History
