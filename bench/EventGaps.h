#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

/// Looks on at the event loop: the longest time in which it handled no event.
class EventGaps {
public:
    EventGaps() {
        QObject::connect(&beat_, &QTimer::timeout, &beat_, [this] { Look(); });
        beat_.start(0);
        since_.start();
    }

    /// The longest gap since the last call, in ms.
    double Take_ms() {
        Look();
        const double longest_ms = longest_ms_;
        longest_ms_ = 0;
        return longest_ms;
    }

private:
    void Look() {
        longest_ms_ = std::max(longest_ms_, static_cast<double>(since_.nsecsElapsed()) / 1e6);
        since_.start();
    }

    QTimer beat_;
    QElapsedTimer since_;
    double longest_ms_ = 0;
};
