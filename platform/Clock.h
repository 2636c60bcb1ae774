#pragma once

#include <chrono>

namespace platform {

/// A moment of the user's wall clock, in local time.
struct LocalTime {
    int year = 1970;
    int month = 1; ///< 1..12
    int day = 1;   ///< 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

class Clock {
public:
    virtual ~Clock() = default;

    virtual LocalTime Now() const = 0;

    /// Time since an arbitrary start; a change of the wall clock does not move it.
    virtual std::chrono::milliseconds Monotonic() const = 0;
};

} // namespace platform
