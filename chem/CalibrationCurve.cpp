#include "chem/CalibrationCurve.h"

#include "app/Mcommon.h"
#include "chem/StandardEntry.h"

#include <algorithm>

CalibrationCurve CurveOf(const CalibrationRecord& record, bool isPH) {
    CalibrationCurve curve;
    if (!isPH)
        curve.standards =
            UnitOf(record.StdUnit) == StandardUnit::ppm ? Quantity::ppm : Quantity::mol_l;
    const int count = std::clamp<int>(record.PointCount, 0, maxCalibrationPoints);
    for (int j = 0; j < count; ++j) {
        const auto row = static_cast<std::size_t>(j);
        const double standard = record.Standard[row];
        if (isPH)
            curve.points.push_back({standard, record.CaliData[row]});
        else if (standard > 0)
            curve.points.push_back({Mcommon::Log10(standard), record.CaliData[row]});
    }
    return curve;
}
