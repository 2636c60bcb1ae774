#pragma once

#include "platform/Platform.h"

/// The hourglass for the duration of a handler.
class BusyPointer {
public:
    BusyPointer() {
        platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
    }
    ~BusyPointer() { End(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

    void End() { platform::Current().desktop.SetMousePointer(platform::MousePointer::normal); }
};
