#pragma once

#include "platform/SerialControl.h"

#include <memory>

namespace platform {

/// A serial control that knows no event loop: its owner waits for the event Arrival() and then
/// calls Deliver(). Handlers are called from there alone, so that a handler may close the port or
/// show a box. Windows only: elsewhere Qt's control waits by itself.
class WaitingSerialControl : public SerialControl {
public:
    /// The system's handle of the event that is signalled when bytes may have arrived or the port
    /// may have gone; one and the same for all openings.
    virtual void* Arrival() const = 0;

    /// Tells of the bytes that have arrived, or that the port has gone.
    virtual void Deliver() = 0;
};

std::unique_ptr<WaitingSerialControl> MakeWaitingSerialControl();

} // namespace platform
