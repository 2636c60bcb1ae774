#include "chem/Drift.h"

#include <algorithm>
#include <span>

void Drift::Add(float reading, std::chrono::milliseconds now) {
    recent_[count_ % window_] = {reading, now};
    ++count_;
}

std::optional<float> Drift::PerMinute() const {
    using Minutes = std::chrono::duration<double, std::ratio<60>>;
    const std::span kept(recent_.data(), Kept());
    if (kept.empty())
        return std::nullopt;
    const auto [first, last] = std::ranges::minmax(kept, {}, &Reading::time);
    if (last.time - first.time < shortestSpan)
        return std::nullopt;

    // Both relative to the first reading: large potentials and times cost no digits.
    const auto count = static_cast<double>(kept.size());
    double times = 0, values = 0, squares = 0, products = 0;
    for (const Reading& reading : kept) {
        const double time = Minutes(reading.time - first.time).count();
        const double value = static_cast<double>(reading.value) - static_cast<double>(first.value);
        times += time;
        values += value;
        squares += time * time;
        products += time * value;
    }
    const double slope = (count * products - times * values) / (count * squares - times * times);
    return static_cast<float>(slope);
}

std::string DriftText(float perMinute, std::string_view unit, NumberText::Pattern pattern) {
    std::string number = NumberText::Format(perMinute, pattern);
    if (NumberText::Leading(number) == 0 && number.starts_with('-'))
        number.erase(0, 1);
    else if (NumberText::Leading(number) > 0)
        number.insert(0, 1, '+');
    return number + " " + std::string(unit) + "/min";
}
