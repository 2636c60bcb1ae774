#include "platform/qt/PortInfo.h"

#include "platform/PortList.h"

namespace platform {

PortInfo InfoOfPort(int number) {
    return {QString::fromStdWString(FriendlyNameOfPort(number)), IsPortThere(number)};
}

} // namespace platform
