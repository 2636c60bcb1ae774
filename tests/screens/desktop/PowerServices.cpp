#include "screens/desktop/PowerServices.h"

#include <gtest/gtest.h>

#include <QDBusError>
#include <QDBusMessage>

#include <array>
#include <poll.h>
#include <unistd.h>

PowerService::~PowerService() {
    Withdraw();
}

QStringList PowerService::Asked() const {
    const QMutexLocker lock(&mutex_);
    return asked_;
}

bool PowerService::Answer(const QStringList& arguments) {
    const QMutexLocker lock(&mutex_);
    asked_.append(arguments.join('|'));
    if (manner_ == Manner::refuses)
        sendErrorReply(QDBusError::AccessDenied, "not now");
    if (manner_ == Manner::hangs)
        setDelayedReply(true); // and none ever comes
    return manner_ == Manner::grants;
}

LoginManager::LoginManager(const QString& busAddress, Manner manner) : PowerService(manner) {
    Offer(busAddress, "org.freedesktop.login1", "/org/freedesktop/login1");
}

LoginManager::~LoginManager() {
    Withdraw();
    if (watched_ >= 0)
        ::close(watched_);
}

QDBusUnixFileDescriptor LoginManager::Inhibit(const QString& what, const QString& who,
                                              const QString& why, const QString& mode) {
    std::array<int, 2> ends{};
    if (!Answer({what, who, why, mode}) || ::pipe(ends.data()) != 0)
        return {};
    const QMutexLocker lock(&mutex_);
    watched_ = ends[0];
    QDBusUnixFileDescriptor given;
    given.giveFileDescriptor(ends[1]);
    return given;
}

int LoginManager::Held() const {
    const QMutexLocker lock(&mutex_);
    pollfd watched{watched_, POLLIN, 0};
    return watched_ >= 0 && ::poll(&watched, 1, 0) == 0 ? 1 : 0; // its end is reported once closed
}

uint CookieService::Give(const QStringList& arguments) {
    if (!Answer(arguments))
        return 0;
    const QMutexLocker lock(&mutex_);
    given_.insert(++last_);
    return last_;
}

void CookieService::TakeBack(uint cookie) {
    const QMutexLocker lock(&mutex_);
    EXPECT_EQ(given_.erase(cookie), 1U) << "a number that was not given";
}

int CookieService::Held() const {
    const QMutexLocker lock(&mutex_);
    return static_cast<int>(given_.size());
}

PowerManagement::PowerManagement(const QString& busAddress, Manner manner) : CookieService(manner) {
    Offer(busAddress, "org.freedesktop.PowerManagement",
          "/org/freedesktop/PowerManagement/Inhibit");
}

uint PowerManagement::Inhibit(const QString& application, const QString& reason) {
    return Give({application, reason});
}

SessionManager::SessionManager(const QString& busAddress, Manner manner) : CookieService(manner) {
    Offer(busAddress, "org.gnome.SessionManager", "/org/gnome/SessionManager");
}

uint SessionManager::Inhibit(const QString& application, uint window, const QString& reason,
                             uint flags) {
    return Give({application, QString::number(window), reason, QString::number(flags)});
}
