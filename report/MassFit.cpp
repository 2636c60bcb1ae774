#include "report/MassFit.h"

#include "base/NumberText.h"

#include <cmath>

namespace Mreport {

std::optional<std::string> MassFit::Text() const {
    constexpr int mostDigits = 7;
    if (taken_ == 0 || !std::isfinite(masses_.high) || masses_.high <= 0)
        return std::nullopt;
    const double middle = masses_.low + (masses_.high - masses_.low) / 2;
    const int firstDigit = static_cast<int>(std::floor(std::log10(middle)));
    double mass = middle;
    for (int digits = 1; digits <= mostDigits; ++digits) {
        const double unit = std::pow(10.0, firstDigit - digits + 1);
        mass = std::round(middle / unit) * unit;
        if (masses_.Holds(mass))
            break;
    }
    return NumberText::Plain(static_cast<float>(mass));
}

} // namespace Mreport
