#pragma once

#include "screens/desktop/EndWithTest.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <gtest/gtest.h>

/// The window manager of a desktop; it ends with its object.
class WindowManager {
public:
    explicit WindowManager(const QProcessEnvironment& environment) {
        manager_.setProcessEnvironment(environment);
        EndWithTest(manager_);
        manager_.start("openbox", QStringList());
        EXPECT_TRUE(manager_.waitForStarted()) << manager_.errorString().toStdString();
    }
    ~WindowManager() {
        manager_.kill();
        manager_.waitForFinished();
    }
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

private:
    QProcess manager_;
};
