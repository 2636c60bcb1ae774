#pragma once

#include "platform/Timer.h"

#include <QTimer>

/// A form's QTimer as the core's timer.
class FormTimer : public platform::Timer {
public:
    explicit FormTimer(QTimer& timer) : timer_(timer) {}

    void SetInterval(std::chrono::milliseconds interval) override { timer_.setInterval(interval); }
    std::chrono::milliseconds Interval() const override { return timer_.intervalAsDuration(); }
    void SetEnabled(bool enabled) override {
        if (enabled)
            timer_.start();
        else
            timer_.stop();
    }
    bool Enabled() const override { return timer_.isActive(); }

private:
    QTimer& timer_;
};
