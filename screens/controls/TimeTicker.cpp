#include "screens/controls/TimeTicker.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array steps_s = {5, 10, 15, 30, 60, 120, 300, 600, 900, 1800};
constexpr int minute_s = 60;
constexpr int day_s = 24 * 60 * minute_s;

} // namespace

double TimeTicker::Step(double range_s, int room) {
    const double least = range_s / std::max(room, 1);
    const auto found = std::ranges::find_if(
        steps_s, [least](int step) { return static_cast<double>(step) >= least; });
    return found == steps_s.end() ? steps_s.back() : *found;
}

QString TimeTicker::Label(double second, double step_s) {
    const int ofDay = (static_cast<int>(std::lround(second)) % day_s + day_s) % day_s;
    const QTime time = QTime::fromMSecsSinceStartOfDay(ofDay * 1000);
    return time.toString(step_s < minute_s ? "hh:mm:ss" : "hh:mm");
}

double TimeTicker::getTickStep(const QCPRange& range) {
    step_s_ = Step(range.size(), room_);
    return step_s_;
}

int TimeTicker::getSubTickCount(double /*step_s*/) {
    return 4;
}

QString TimeTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/,
                                 int /*precision*/) {
    return Label(tick, step_s_);
}
