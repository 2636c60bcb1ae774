#pragma once

#include "chem/Drift.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

/// How long an electrode has been read, whether its reading has settled, and how fast it drifts
/// until then. It advises the analyst and decides nothing.
class StabilityMark {
public:
    static constexpr float tolerance_mV = 0.2F; ///< largest spread of a steady reading

    /// The last `window` averaged readings are looked at, 2 to Drift::largestWindow.
    explicit StabilityMark(std::size_t window = Drift::usualWindow)
        : window_(window), drift_(window) {}

    /// A reading starts at this moment of the monotonic clock.
    void Start(std::chrono::milliseconds now);

    /// The next averaged reading and its moment.
    void Add(float potential_mV, std::chrono::milliseconds now);

    /// The last averaged readings, as many as are looked at, lie within 0.2 mV. Fewer are never
    /// steady.
    bool IsSteady() const;

    /// "steady", the drift as "+1.3 mV/min", or "drifting" before that is known.
    std::string Text() const;

    std::chrono::milliseconds Elapsed(std::chrono::milliseconds now) const { return now - start_; }

private:
    std::size_t window_;
    std::array<float, Drift::largestWindow> recent_mV_{}; ///< a ring of window_
    std::size_t count_ = 0;
    std::chrono::milliseconds start_{0};
    Drift drift_;
};

/// Whole minutes and seconds, "1:05".
std::string MinutesAndSeconds(std::chrono::milliseconds time);
