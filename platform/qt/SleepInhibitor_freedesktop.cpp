#include "platform/qt/SleepInhibitor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <optional>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int answerTime_ms = 1500; ///< a service that hangs must not hold the measurement up

struct Service {
    QString name;
    QString path;
    QString interface;
};

/// The service's first answer; nothing where there is no such service or it refuses.
std::optional<QVariant> Call(const QDBusConnection& bus, const Service& service,
                             const QString& method, const QVariantList& arguments) {
    if (!bus.isConnected())
        return std::nullopt;
    auto message =
        QDBusMessage::createMethodCall(service.name, service.path, service.interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus.call(message, QDBus::Block, answerTime_ms);
    if (answer.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    return answer.arguments().value(0);
}

/// The login manager's lock is an open file: it ends when the file is closed.
class LoginLock : public WakeLock {
public:
    explicit LoginLock(const QDBusUnixFileDescriptor& file) : file_(file) {}

private:
    QDBusUnixFileDescriptor file_;
};

std::unique_ptr<WakeLock> AskLoginManager(const QString& reason) {
    const Service loginManager = {"org.freedesktop.login1", "/org/freedesktop/login1",
                                  "org.freedesktop.login1.Manager"};
    const auto answer = Call(QDBusConnection::systemBus(), loginManager, "Inhibit",
                             {"sleep:idle", QCoreApplication::applicationName(), reason, "block"});
    if (!answer)
        return nullptr;
    const auto file = answer->value<QDBusUnixFileDescriptor>();
    return file.isValid() ? std::make_unique<LoginLock>(file) : nullptr;
}

/// A desktop's power manager, whose lock is a number.
class DesktopLock : public WakeLock {
public:
    DesktopLock(Service service, QString release, QVariant cookie)
        : service_(std::move(service)), release_(std::move(release)), cookie_(std::move(cookie)) {}
    ~DesktopLock() override { Call(QDBusConnection::sessionBus(), service_, release_, {cookie_}); }
    DesktopLock(const DesktopLock&) = delete;
    DesktopLock& operator=(const DesktopLock&) = delete;

private:
    Service service_;
    QString release_;
    QVariant cookie_;
};

std::unique_ptr<WakeLock> AskDesktop(const Service& service, const QString& release,
                                     const QVariantList& arguments) {
    auto cookie = Call(QDBusConnection::sessionBus(), service, "Inhibit", arguments);
    return cookie ? std::make_unique<DesktopLock>(service, release, *std::move(cookie)) : nullptr;
}

std::unique_ptr<WakeLock> AskPowerManagement(const QString& reason) {
    const QString name = "org.freedesktop.PowerManagement";
    return AskDesktop({name, "/org/freedesktop/PowerManagement/Inhibit", name + ".Inhibit"},
                      "UnInhibit", {QCoreApplication::applicationName(), reason});
}

std::unique_ptr<WakeLock> AskSessionManager(const QString& reason) {
    constexpr uint noWindow = 0;
    constexpr uint suspending = 4; // of the session manager's flags
    const QString name = "org.gnome.SessionManager";
    return AskDesktop({name, "/org/gnome/SessionManager", name}, "Uninhibit",
                      {QCoreApplication::applicationName(), noWindow, reason, suspending});
}

/// All the locks that were given.
class WakeLocks : public WakeLock {
public:
    void Add(std::unique_ptr<WakeLock> lock) {
        if (lock)
            locks_.push_back(std::move(lock));
    }
    bool IsEmpty() const { return locks_.empty(); }

private:
    std::vector<std::unique_ptr<WakeLock>> locks_;
};

} // namespace

std::unique_ptr<WakeLock> InhibitSleep(const QString& reason) {
    auto locks = std::make_unique<WakeLocks>();
    locks->Add(AskLoginManager(reason));
    locks->Add(AskPowerManagement(reason));
    locks->Add(AskSessionManager(reason));
    return locks->IsEmpty() ? nullptr : std::move(locks);
}

} // namespace platform
