#pragma once

#include "base/NumberInterval.h"
#include "chem/CalibrationRecord.h"

#include <vector>

/// What the conversion may have given where both the potential and the calibration are known from
/// their texts alone.
struct ReadingImage {
    std::vector<NumberInterval> values; ///< pH, ppm or mol/l, as calibrated
    bool mayFail = false;               ///< the conversion may have failed as well
};

/// The image of a potential in mV by a usable calibration, on the linear scale for pH. Each segment
/// within the interval is converted by Measure at its ends, with the points' potentials moved by
/// half of their last digit to either side: the result is monotone in each of them. The standards
/// are taken as they stand, for they were typed.
ReadingImage ImageOf(const CalibrationRecord& record, bool isPH,
                     const NumberInterval& potential_mV);
