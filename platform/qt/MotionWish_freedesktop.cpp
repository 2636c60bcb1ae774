#include "platform/qt/MotionWish.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <optional>

namespace platform {

namespace {

constexpr int answerTimeout_ms = 300; ///< a desktop that does not answer must not hold a reading up

/// A setting of the desktop through its portal; nothing where there is neither.
std::optional<QVariant> DesktopSetting(const QString& group, const QString& key) {
    auto request = QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop",
                                                  "/org/freedesktop/portal/desktop",
                                                  "org.freedesktop.portal.Settings", "Read");
    request << group << key;
    const QDBusReply<QDBusVariant> reply =
        QDBusConnection::sessionBus().call(request, QDBus::Block, answerTimeout_ms);
    if (!reply.isValid())
        return std::nullopt;
    QVariant value = reply.value().variant();
    while (value.userType() == qMetaTypeId<QDBusVariant>()) // older portals wrap it once more
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

bool UserWantsLessMotion() {
    const auto reduced = DesktopSetting("org.freedesktop.appearance", "reduced-motion");
    if (reduced && reduced->toUInt() == 1)
        return true;
    const auto animations = DesktopSetting("org.gnome.desktop.interface", "enable-animations");
    return animations && !animations->toBool();
}

} // namespace platform
