#include "platform/qt/SystemSerialControl.h"

#include "platform/qt/QtSerialControl.h"

#include <utility>

namespace platform {

std::shared_ptr<SerialControl> MakeSerialControl(QObject& owner, EventRunner guard) {
    auto control = std::make_shared<QtSerialControl>(&owner);
    control->setObjectName("MSComm1");
    control->Guard = std::move(guard);
    return control;
}

} // namespace platform
