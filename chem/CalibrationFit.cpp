#include "chem/CalibrationFit.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/CalibrationCurve.h"
#include "chem/TheoreticalSlope.h"

#include <algorithm>

namespace {

constexpr double neutral_pH = 7;

float AsDisplayed(double value) {
    return static_cast<float>(
        NumberText::Leading(Mcommon::FormatReading(static_cast<float>(value))));
}

} // namespace

CalibrationFit FitOf(const CalibrationRecord& record, std::string_view electrode) {
    const bool isPH = Electrode::KindOf(electrode) == Electrode::Kind::pH;
    const auto points = CurveOf(record, isPH).points;
    // Asked of the points themselves: their mean may differ from each by its last bit.
    if (std::ranges::all_of(points, [&](const auto& point) { return point.x == points.front().x; }))
        return {};
    const auto count = static_cast<double>(points.size());
    double x = 0;
    double y = 0;
    for (const auto& point : points) {
        x += point.x / count;
        y += point.potential_mV / count;
    }
    double square = 0;
    double product = 0;
    for (const auto& point : points) {
        const double distance = point.x - x;
        square += distance * distance;
        product += distance * (point.potential_mV - y);
    }
    const double slope = product / square;
    CalibrationFit fit;
    // Of two points the slope is that of the only segment, as it was shown.
    fit.slope = record.PointCount == 2 ? record.Slope[0] : AsDisplayed(slope);
    fit.percent = TheoreticalSlope::Percent(*fit.slope, electrode);
    fit.offset_mV = AsDisplayed(y + slope * ((isPH ? neutral_pH : 0) - x));
    return fit;
}
