#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/// A message bus of the test's own; it ends with its object.
class PrivateBus {
public:
    /// The services that the bus starts get this environment. Fails the test where the bus does not
    /// start.
    explicit PrivateBus(
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const QString& Address() const { return address_; }

private:
    QProcess daemon_;
    QString address_;
};
