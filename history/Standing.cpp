#include "history/Standing.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "chem/CalibrationFit.h"
#include "chem/TheoreticalSlope.h"
#include "history/Selection.h"
#include "platform/Platform.h"
#include "settings/mWinInit.h"

#include <chrono>
#include <cmath>

namespace History {

namespace {

/// Whole days from one date to another, whatever the hour.
int DaysBetween(const LocalTime& from, const LocalTime& to) {
    using namespace std::chrono;
    const auto day = [](const LocalTime& time) {
        return sys_days(year(time.year) / month(static_cast<unsigned>(time.month)) /
                        std::chrono::day(static_cast<unsigned>(time.day)));
    };
    return static_cast<int>((day(to) - day(from)).count());
}

std::string When(int days) {
    if (days < 1)
        return "earlier today";
    return days == 1 ? "yesterday" : std::to_string(days) + " days ago";
}

std::string Percent(float value) {
    return NumberText::Format(value, NumberText::Pattern::oneDecimal) + " %";
}

} // namespace

Standing StandingOf(const std::optional<float>& percent, const std::optional<PastCalibration>& last,
                    const LocalTime& now) {
    if (!percent)
        return {};
    Standing standing{Percent(*percent), TheoreticalSlope::IsUsual(*percent)};
    if (!last || !last->slope_percent)
        return standing;
    const std::string when = When(DaysBetween(last->at, now));
    const std::string change = Percent(std::abs(*percent - *last->slope_percent));
    if (change == Percent(0))
        standing.text += ", as " + when;
    else
        standing.text +=
            ", " + change + (*percent < *last->slope_percent ? " less" : " more") + " than " + when;
    return standing;
}

Standing StandingOf(std::size_t channel, const CalibrationRecord& record) {
    Log* log = Log::Current();
    if (log == nullptr || !CanBeKept())
        return {};
    const auto& setup = mWinInit::ChannelSetup.at(channel);
    try {
        return StandingOf(FitOf(record, setup.Electrode).percent,
                          LastCalibrationOf(*log, {setup.Electrode, setup.SerialNo}),
                          platform::Current().clock.Now());
    } catch (const RunTimeError&) {
        return {}; // advice more or less: the calibration goes on
    }
}

} // namespace History
