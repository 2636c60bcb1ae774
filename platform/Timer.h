#pragma once

#include <chrono>

namespace platform {

/// A form's timer as the core sees it; its tick is a call into the core.
class Timer {
public:
    virtual ~Timer() = default;

    virtual void SetInterval(std::chrono::milliseconds interval) = 0;
    virtual std::chrono::milliseconds Interval() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool Enabled() const = 0;
};

} // namespace platform
