#include "screens/frmPortSettings/PortDevice.h"

#include "base/PortName.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "platform/qt/Text.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace PortDevice {

QString NameOf(int port) {
    const auto device =
        platform::DeviceOfPort(port, platform::Current().places.ConfigurationFolder());
    const auto named = QString::fromStdString(device);
    const auto resolved = QFileInfo(named).canonicalFilePath();
    return resolved.isEmpty() ? named : resolved;
}

QString DescriptionOf(int port) {
    auto device = NameOf(port);
    for (const auto& info : QSerialPortInfo::availablePorts()) {
        if (info.systemLocation() != device)
            continue;
        QString text = device;
        if (!info.description().isEmpty())
            text += " - " + info.description();
        if (!info.manufacturer().isEmpty())
            text += " (" + info.manufacturer() + ")";
        return text;
    }
    return device;
}

std::filesystem::path LinkOf(int port) {
    return platform::Current().places.ConfigurationFolder() / "ports" /
           ("com" + std::to_string(port));
}

std::optional<int> FreeNumber() {
    for (int port = 1; port <= PortName::last; ++port) {
        // A link counts even where it leads nowhere: it is the user's.
        const bool linked = QFileInfo(Text::FromPath(LinkOf(port))).isSymLink();
        if (!linked && !QFileInfo::exists(NameOf(port)))
            return port;
    }
    return std::nullopt;
}

} // namespace PortDevice
