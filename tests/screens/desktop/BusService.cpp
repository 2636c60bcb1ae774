#include "screens/desktop/BusService.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusError>

void BusService::Offer(const QString& busAddress, const QString& name, const QString& path) {
    connectionName_ = name + QString::number(reinterpret_cast<quintptr>(this));
    path_ = path;
    thread_.start();
    moveToThread(&thread_);
    const auto serve = [&] {
        auto bus = QDBusConnection::connectToBus(busAddress, connectionName_);
        EXPECT_TRUE(bus.registerObject(path_, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(bus.registerService(name)) << bus.lastError().message().toStdString();
    };
    QMetaObject::invokeMethod(this, serve, Qt::BlockingQueuedConnection);
}

void BusService::Withdraw() {
    if (!thread_.isRunning())
        return;
    // The connection closes later, in a thread of its own, where it would still call upon this
    // object: nothing may lead from it to here by then.
    QDBusConnection(connectionName_).unregisterObject(path_);
    disconnect();
    QDBusConnection::disconnectFromBus(connectionName_);
    thread_.quit();
    thread_.wait();
}
