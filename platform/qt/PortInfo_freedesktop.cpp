#include "platform/qt/PortInfo.h"

#include "platform/Platform.h"
#include "platform/System.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace platform {

namespace {

QString DescriptionOf(const QString& device) {
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

} // namespace

PortInfo InfoOfPort(int number) {
    const auto named =
        QString::fromStdString(DeviceOfPort(number, Current().places.ConfigurationFolder()));
    const auto resolved = QFileInfo(named).canonicalFilePath();
    return {DescriptionOf(resolved.isEmpty() ? named : resolved), !resolved.isEmpty()};
}

} // namespace platform
