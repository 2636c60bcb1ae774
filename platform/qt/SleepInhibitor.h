#pragma once

#include "platform/Desktop.h"

#include <QString>

#include <memory>

namespace platform {

/// The system does not go to sleep by itself while the lock lives. Asks every service that can
/// hold it off, since desktops differ in whom they ask; nothing where there is none.
std::unique_ptr<WakeLock> InhibitSleep(const QString& reason);

} // namespace platform
