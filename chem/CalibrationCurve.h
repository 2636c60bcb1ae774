#pragma once

#include "base/Quantity.h"
#include "chem/CalibrationRecord.h"

#include <vector>

/// The points of a calibration as its summary plots them.
struct CalibrationCurve {
    struct Point {
        double x = 0;            ///< pH, or the decimal logarithm of the concentration
        double potential_mV = 0; ///< mV
    };

    Quantity standards = Quantity::pH; ///< what they are: pH, ppm or mol/l
    std::vector<Point> points;         ///< in the order of their recording
};

/// A point whose standard has no logarithm is left out.
CalibrationCurve CurveOf(const CalibrationRecord& record, bool isPH);
