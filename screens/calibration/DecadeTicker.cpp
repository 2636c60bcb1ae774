#include "screens/calibration/DecadeTicker.h"

#include "base/NumberText.h"
#include "platform/qt/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array oneTwoFive = {1, 2, 5};
constexpr int subTicks = 8;       ///< 2 to 9 of each decade
constexpr double roundOff = 1E-9; ///< of a logarithm that stands for a whole decade

} // namespace

std::vector<double> DecadeTicks(double lower, double upper) {
    const auto first = static_cast<int>(std::floor(lower));
    const auto last = static_cast<int>(std::floor(upper));
    const int decades =
        static_cast<int>(std::floor(upper + roundOff) - std::ceil(lower - roundOff)) + 1;
    std::vector<double> ticks;
    for (int decade = first; decade <= last; ++decade)
        for (const int digit : oneTwoFive) {
            const double tick = decade + std::log10(digit);
            const bool within = tick >= lower - roundOff && tick <= upper + roundOff;
            if (within && (digit == 1 || decades < 2))
                ticks.push_back(tick);
        }
    return ticks;
}

QVector<double> DecadeTicker::createTickVector(double /*tickStep*/, const QCPRange& range) {
    const std::vector<double> ticks = DecadeTicks(range.lower, range.upper);
    return {ticks.begin(), ticks.end()};
}

int DecadeTicker::getSubTickCount(double /*tickStep*/) {
    return subTicks;
}

QVector<double> DecadeTicker::createSubTickVector(int /*subTickCount*/,
                                                  const QVector<double>& ticks) {
    QVector<double> between;
    if (ticks.isEmpty())
        return between;
    const int first = static_cast<int>(std::floor(ticks.front())) - 1;
    const int last = static_cast<int>(std::floor(ticks.back()));
    for (int decade = first; decade <= last; ++decade)
        for (int digit = 2; digit < subTicks + 2; ++digit)
            between.append(decade + std::log10(digit));
    return between;
}

QString DecadeTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/,
                                   int /*precision*/) {
    return Text::ToQt(NumberText::Plain(static_cast<float>(std::pow(10.0, tick))));
}
