#pragma once

#include "base/LocalTime.h"

#include <chrono>

namespace platform {

class Clock {
public:
    virtual ~Clock() = default;

    virtual LocalTime Now() const = 0;

    /// Time since an arbitrary start; a change of the wall clock does not move it.
    virtual std::chrono::milliseconds Monotonic() const = 0;
};

} // namespace platform
