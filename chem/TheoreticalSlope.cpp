#include "chem/TheoreticalSlope.h"

#include "base/Electrode.h"
#include "base/NumberText.h"

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

} // namespace TheoreticalSlope
