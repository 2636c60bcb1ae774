#include "walk/built/BusListener.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>

#include <utility>

namespace {

const QString connectionName = "walk's listener";
constexpr int askEvery_ms = 50;
constexpr int patience_ms = 60000;

/// Processor time that the process's first thread, the one that handles events, has used.
std::int64_t Work_ms(std::int64_t process) {
    QFile file(QString("/proc/%1/task/%1/schedstat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    constexpr std::int64_t ns_per_ms = 1'000'000;
    return file.readAll().split(' ').value(0).toLongLong() / ns_per_ms;
}

QDBusMessage NameRequest(const QString& service, const QString& path) {
    auto request =
        QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
    request << "org.a11y.atspi.Accessible"
            << "Name";
    return request;
}

} // namespace

BusListener::BusListener(QString bus, Heard heard, int limit_ms)
    : bus_(std::move(bus)), heard_(std::move(heard)), limit_ms_(limit_ms) {}

void BusListener::Begin() {
    connection_.emplace(QDBusConnection::connectToBus(bus_, connectionName));
    Subscribe();
    connection_->connect({}, {}, "org.a11y.atspi.Event.Object", "PropertyChange", this,
                         SLOT(NameChanged(QDBusMessage)));
    asking_ = new QTimer(this);
    connect(asking_, &QTimer::timeout, this, [this] {
        if (asked_)
            Judge();
        else
            Ask();
    });
    asking_->start(askEvery_ms);
}

/// A program that starts may miss what was wanted before it was there.
void BusListener::Subscribe() {
    auto wanted =
        QDBusMessage::createMethodCall("org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                                       "org.a11y.atspi.Registry", "RegisterEvent");
    wanted << "object:property-change:accessible-name" << QStringList() << QString();
    connection_->call(wanted, QDBus::Block, patience_ms);
}

void BusListener::End() {
    delete std::exchange(asking_, nullptr);
    connection_.reset();
    QDBusConnection::disconnectFromBus(connectionName);
}

void BusListener::Watch(const QString& program, std::int64_t process) {
    const std::scoped_lock lock(mutex_);
    program_ = program;
    process_ = process;
}

std::int64_t BusListener::LongestWait_ms() const {
    const std::scoped_lock lock(mutex_);
    return longest_ms_;
}

std::optional<QString> BusListener::Standstill() const {
    const std::scoped_lock lock(mutex_);
    return standstill_;
}

void BusListener::NameChanged(const QDBusMessage& message) {
    if (message.arguments().value(0).toString() == "accessible-name")
        ReadName(message.service(), message.path());
}

void BusListener::ReadName(const QString& service, const QString& path) {
    auto* const answer = new QDBusPendingCallWatcher(
        connection_->asyncCall(NameRequest(service, path), patience_ms), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            heard_(reply.value().variant().toString());
        answer->deleteLater();
    });
}

void BusListener::Ask() {
    const std::scoped_lock lock(mutex_);
    if (program_.isEmpty())
        return;
    asked_ = true;
    sinceQuestion_.start();
    workAtQuestion_ms_ = Work_ms(process_);
    auto* const answer = new QDBusPendingCallWatcher(
        connection_->asyncCall(NameRequest(program_, "/org/a11y/atspi/accessible/root"),
                               patience_ms),
        this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        Judge();
        asked_ = false;
        answer->deleteLater();
    });
}

/// A machine that lets the program wait is not the program's standstill.
void BusListener::Judge() {
    const std::scoped_lock lock(mutex_);
    if (program_.isEmpty())
        return;
    const std::int64_t waited_ms = sinceQuestion_.elapsed();
    const std::int64_t worked_ms = Work_ms(process_) - workAtQuestion_ms_;
    longest_ms_ = std::max(longest_ms_, waited_ms);
    if (worked_ms > limit_ms_ || waited_ms > 10 * limit_ms_)
        standstill_ =
            QString("no answer for %1 ms, of which it worked %2").arg(waited_ms).arg(worked_ms);
}
