#pragma once

#include <QProcess>
#include <QString>

/// A message bus of the test's own; it ends with its object.
class PrivateBus {
public:
    /// Fails the test where the bus does not start.
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const QString& Address() const { return address_; }

private:
    QProcess daemon_;
    QString address_;
};
