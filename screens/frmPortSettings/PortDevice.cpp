#include "screens/frmPortSettings/PortDevice.h"

#include "base/PortName.h"
#include "platform/Platform.h"
#include "platform/qt/PortInfo.h"
#include "platform/qt/Text.h"

#include <QFileInfo>

namespace PortDevice {

std::filesystem::path LinkOf(int port) {
    return PortName::LinkIn(platform::Current().places.ConfigurationFolder(), port);
}

std::optional<int> FreeNumber() {
    for (int port = 1; port <= PortName::last; ++port) {
        // A link counts even where it leads nowhere: it is the user's.
        const bool linked = QFileInfo(Text::FromPath(LinkOf(port))).isSymLink();
        if (!linked && !platform::InfoOfPort(port).isThere)
            return port;
    }
    return std::nullopt;
}

} // namespace PortDevice
