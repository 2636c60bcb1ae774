#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/ChannelDisplay.h"

#include <optional>
#include <string>

/// The span that a channel's standards cover. Beyond it the conversion goes on along the last
/// segment, which an analyst wants to know.
struct StandardsRange {
    float low = 0;
    float high = 0;
    Quantity quantity = Quantity::ppm; ///< that of the standards: pH, ppm or mol/l

    bool operator==(const StandardsRange&) const = default;
};

/// Nothing for a channel that is not converted, or not by two standards or more.
std::optional<StandardsRange> StandardsOf(const CalibrationRecord& record, Electrode::Kind kind);

/// True when the value as it is shown lies outside the standards as they would be shown: a reading
/// of 100.0 is not beyond a standard of 100. A channel without a value is not outside.
bool IsOutside(const StandardsRange& range, const ChannelDisplay::Values& values);

/// "outside its standards (1 to 100 ppm)"
std::string OutsideText(const StandardsRange& range);
