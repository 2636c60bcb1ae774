#pragma once

#include "platform/Platform.h"

#include <utility>

/// The hourglass for the duration of a handler.
class BusyPointer {
public:
    BusyPointer() {
        platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
    }
    ~BusyPointer() { End(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

    void End() {
        if (std::exchange(shown_, false))
            platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
    }

private:
    bool shown_ = true;
};
