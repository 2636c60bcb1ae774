#include "chem/CalibrationCurve.h"

#include "app/Mcommon.h"
#include "chem/StandardEntry.h"

CalibrationCurve CurveOf(const CalibrationRecord& record, bool isPH) {
    CalibrationCurve curve;
    if (!isPH)
        curve.standards =
            UnitOf(record.StdUnit) == StandardUnit::ppm ? Quantity::ppm : Quantity::mol_l;
    for (std::size_t row = 0; row < record.Points(); ++row) {
        const double standard = record.Standard[row];
        if (isPH)
            curve.points.push_back({standard, record.CaliData[row]});
        else if (standard > 0)
            curve.points.push_back({Mcommon::Log10(standard), record.CaliData[row]});
    }
    return curve;
}
