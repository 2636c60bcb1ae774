#include "chem/LimitWatch.h"

#include "base/DateText.h"

std::string LimitsText(const Limits& limits) {
    if (!limits.AreSet())
        return {};
    const std::string unit = " " + std::string(Quantities::Label(limits.quantity));
    if (!limits.high)
        return "from " + NumberText::Plain(*limits.low) + unit;
    if (!limits.low)
        return "up to " + NumberText::Plain(*limits.high) + unit;
    return NumberText::Plain(*limits.low) + " to " + NumberText::Plain(*limits.high) + unit;
}

void LimitWatch::Watch(const ChannelLimits& limits) {
    for (std::size_t channel = 0; channel < watched_.size(); ++channel)
        if (watched_[channel].limits != limits[channel])
            watched_[channel] = {limits[channel], State::inside, 0, {}, std::nullopt};
}

bool LimitWatch::Add(std::size_t channel, const ChannelDisplay::Values& values,
                     const LocalTime& now) {
    Watched& watched = watched_[channel];
    const auto value = values[watched.limits.quantity];
    if (!value)
        return false;
    if (!watched.limits.Hold(*value))
        return AddOutside(watched, now);
    AddInside(watched, now);
    return false;
}

bool LimitWatch::AddOutside(Watched& watched, const LocalTime& now) {
    if (watched.state != State::inside) {
        watched.until.reset();
        return false;
    }
    if (watched.outside == 0)
        watched.since = now;
    if (++watched.outside < readingsUntilAlarm)
        return false;
    watched.state = State::alarm;
    return true;
}

void LimitWatch::AddInside(Watched& watched, const LocalTime& now) {
    watched.outside = 0;
    if (watched.state == State::alarm) {
        if (!watched.until)
            watched.until = now;
    } else {
        watched.state = State::inside;
    }
}

void LimitWatch::Acknowledge(std::size_t channel) {
    Watched& watched = watched_[channel];
    if (watched.state != State::alarm)
        return;
    watched.state = watched.until ? State::inside : State::acknowledged;
    watched.until.reset();
}

std::string LimitWatch::Text(std::size_t channel) const {
    const Watched& watched = watched_[channel];
    if (watched.state == State::inside)
        return {};
    const std::string limits = "outside its limits (" + LimitsText(watched.limits) + ") ";
    const std::string since = DateText::TimeOfDay(watched.since);
    if (!watched.until)
        return limits + "since " + since;
    return "was " + limits + "from " + since + " to " + DateText::TimeOfDay(*watched.until);
}
