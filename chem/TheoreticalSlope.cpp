#include "chem/TheoreticalSlope.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"

#include <algorithm>

namespace TheoreticalSlope {

std::optional<float> Of(std::string_view electrode) {
    const int charge = Electrode::Charge(electrode);
    if (charge == 0)
        return std::nullopt;
    const float slope = nernst_mV_per_decade / static_cast<float>(charge);
    // pH is the negative logarithm of the activity.
    return Electrode::KindOf(electrode) == Electrode::Kind::pH ? -slope : slope;
}

std::optional<float> Percent(float slope, std::string_view electrode) {
    const auto theory = Of(electrode);
    if (!theory)
        return std::nullopt;
    const float percent = slope / *theory * 100.0F;
    return static_cast<float>(
        NumberText::Leading(NumberText::Format(percent, NumberText::Pattern::oneDecimal)));
}

bool IsUsual(float percent) {
    return percent >= lowest_percent && percent <= highest_percent;
}

std::vector<Line> Lines(const CalibrationRecord& record, std::string_view electrode) {
    std::vector<Line> lines;
    const int segments = std::clamp<int>(record.PointCount - 1, 0, maxCalibrationPoints - 1);
    for (int s = 0; s < segments; ++s) {
        const float slope = record.Slope[static_cast<std::size_t>(s)];
        Line line{.points = std::to_string(s + 1) + " - " + std::to_string(s + 2),
                  .slope = Mcommon::FormatReading(slope),
                  .percent = {}};
        if (const auto percent = Percent(slope, electrode)) {
            line.percent = NumberText::Format(*percent, NumberText::Pattern::oneDecimal) + " %";
            line.usual = IsUsual(*percent);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string_view Unit(bool isPH) {
    return isPH ? "mV/pH" : "mV/decade";
}

std::string Remark(const std::vector<Line>& lines) {
    if (std::ranges::all_of(lines, &Line::usual))
        return {};
    return "A marked slope lies outside 90 to 105 % of theory at 25 \xB0"
           "C. Please check the standards, the electrode and the temperature.";
}

} // namespace TheoreticalSlope
