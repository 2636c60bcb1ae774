#pragma once

#include <QDBusContext>
#include <QMutex>
#include <QObject>
#include <QThread>

/// A service on a bus, in a thread of its own as another program would be. Its public slots are
/// what it offers.
class BusService : public QObject, protected QDBusContext {
    Q_OBJECT

protected:
    /// Begins to serve; the last step of each service's constructor.
    void Offer(const QString& busAddress, const QString& name, const QString& path);

    /// Ends serving; the first step of each service's destructor.
    void Withdraw();

    mutable QMutex mutex_; ///< of what the thread and the test share

private:
    QString connectionName_;
    QString path_;
    QThread thread_;
};
