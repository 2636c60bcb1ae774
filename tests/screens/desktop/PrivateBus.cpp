#include "screens/desktop/PrivateBus.h"

#include "screens/desktop/EndWithTest.h"

#include <gtest/gtest.h>

PrivateBus::PrivateBus(const QProcessEnvironment& environment) {
    daemon_.setProcessEnvironment(environment);
    EndWithTest(daemon_);
    daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    EXPECT_TRUE(daemon_.waitForStarted()) << daemon_.errorString().toStdString();
    EXPECT_TRUE(daemon_.waitForReadyRead()) << "the bus names no address";
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    daemon_.terminate();
    daemon_.waitForFinished();
}
