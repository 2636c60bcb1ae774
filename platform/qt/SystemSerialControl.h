#pragma once

#include "platform/SerialControl.h"

#include <functional>
#include <memory>

class QObject;

namespace platform {

/// Runs what an event of the port calls; a form puts its guard here.
using EventRunner = std::function<void(const std::function<void()>&)>;

/// The system's serial port, for the caller alone. Its handlers are called from the event loop
/// alone, through `guard`. `owner`, whose child a control of Qt's is, outlives it.
std::shared_ptr<SerialControl> MakeSerialControl(QObject& owner, EventRunner guard);

} // namespace platform
