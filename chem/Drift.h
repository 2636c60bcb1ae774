#pragma once

#include "base/NumberText.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How fast a series of readings changes, in whatever unit they have: the slope of the straight
/// line through the last of them, by least squares.
class Drift {
public:
    static constexpr std::size_t usualWindow = 10; ///< readings that a calibration looks at
    static constexpr std::size_t largestWindow = 32;

    /// Over a shorter time the last digit's rounding would be taken for a change of the electrode.
    static constexpr std::chrono::milliseconds shortestSpan{5000};

    /// The last `window` readings are looked at, 2 to largestWindow.
    explicit Drift(std::size_t window = usualWindow) : window_(window) {}

    /// Forgets all readings.
    void Start() { count_ = 0; }

    /// The next reading and its moment on the monotonic clock, no earlier than the last one's.
    void Add(float reading, std::chrono::milliseconds now);

    /// The readings' unit per minute; nothing before they span the shortest time.
    std::optional<float> PerMinute() const;

private:
    struct Reading {
        float value = 0;
        std::chrono::milliseconds time{0};
    };

    std::size_t Kept() const { return count_ < window_ ? count_ : window_; }

    std::size_t window_;
    std::array<Reading, largestWindow> recent_{}; ///< a ring of window_; next is count_ % window_
    std::size_t count_ = 0;
};

/// "+1.3 mV/min": a sign unless nothing but zeros is left of the number.
std::string DriftText(float perMinute, std::string_view unit, NumberText::Pattern pattern);
