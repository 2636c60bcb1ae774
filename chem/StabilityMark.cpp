#include "chem/StabilityMark.h"

#include <algorithm>
#include <span>

void StabilityMark::Start(std::chrono::milliseconds now) {
    start_ = now;
    count_ = 0;
    drift_.Start();
}

void StabilityMark::Add(float potential_mV, std::chrono::milliseconds now) {
    recent_mV_[count_ % window_] = potential_mV;
    ++count_;
    drift_.Add(potential_mV, now);
}

bool StabilityMark::IsSteady() const {
    if (count_ < window_)
        return false;
    const auto [lowest, highest] = std::ranges::minmax(std::span(recent_mV_).first(window_));
    // A tenth of the last shown digit: 100.3 - 100.1 exceeds 0.2 in binary by less than that.
    constexpr double roundOff_mV = 0.001;
    return static_cast<double>(highest) - static_cast<double>(lowest) <=
           static_cast<double>(tolerance_mV) + roundOff_mV;
}

std::string StabilityMark::Text() const {
    if (IsSteady())
        return "steady";
    const auto drift_mV = drift_.PerMinute();
    return drift_mV ? DriftText(*drift_mV, "mV", NumberText::Pattern::oneDecimal) : "drifting";
}

std::string MinutesAndSeconds(std::chrono::milliseconds time) {
    const auto seconds = std::max<std::chrono::milliseconds::rep>(time.count() / 1000, 0);
    const std::string rest = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}
