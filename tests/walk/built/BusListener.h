#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

/// Hears on an accessibility bus what the program shows as it changes, and asks the program again
/// and again for an answer. It lives in a thread of its own.
class BusListener : public QObject {
    Q_OBJECT

public:
    /// The name of a control that has changed: "Channel 1 potential in mV: 12.3".
    using Heard = std::function<void(const QString&)>;

    /// `limit_ms` of the program's processor time, or ten times as much of the clock's, without an
    /// answer is a standstill.
    BusListener(QString bus, Heard heard, int limit_ms);

    /// In the listener's thread.
    void Begin();
    void Subscribe(); ///< once more, when a program has started
    void End();

    /// The process to be asked, and its name on the bus; without a name none is.
    void Watch(const QString& program, std::int64_t process);

    /// The longest time of the clock without an answer, and what is to be said of a standstill.
    std::int64_t LongestWait_ms() const;
    std::optional<QString> Standstill() const;

private Q_SLOTS:
    void NameChanged(const QDBusMessage& message);

private:
    void ReadName(const QString& service, const QString& path);
    void Ask();
    void Judge();

    const QString bus_;
    const Heard heard_;
    const int limit_ms_;
    std::optional<QDBusConnection> connection_;
    QTimer* asking_ = nullptr;
    bool asked_ = false;
    QElapsedTimer sinceQuestion_;
    std::int64_t workAtQuestion_ms_ = 0;

    mutable std::mutex mutex_; ///< guards what follows
    QString program_;
    std::int64_t process_ = 0;
    std::int64_t longest_ms_ = 0;
    std::optional<QString> standstill_;
};
