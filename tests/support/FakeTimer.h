#pragma once

#include "platform/Timer.h"

namespace fake {

/// A timer that ticks when the test says so.
class Timer : public platform::Timer {
public:
    void SetInterval(std::chrono::milliseconds interval) override { interval_ = interval; }
    std::chrono::milliseconds Interval() const override { return interval_; }
    void SetEnabled(bool enabled) override {
        enabled_ = enabled;
        starts += enabled ? 1 : 0;
    }
    bool Enabled() const override { return enabled_; }

    int starts = 0; ///< each begins its interval anew, as the system's timer does

private:
    std::chrono::milliseconds interval_{0};
    bool enabled_ = false;
};

} // namespace fake
