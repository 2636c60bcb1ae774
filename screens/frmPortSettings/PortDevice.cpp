#include "screens/frmPortSettings/PortDevice.h"

#include "platform/Platform.h"
#include "platform/System.h"

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

} // namespace PortDevice
