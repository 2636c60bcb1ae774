#pragma once

#include "platform/qt/QtPrinting.h"
#include "screens/support/ScreenTest.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

/// Drives the preview and the print dialog as a user does, from the event loops that they run.
class Preview : public ScreenTest {
protected:
    /// Called at each turn of an event loop with the dialog on top; a user waits while the pointer
    /// is the hourglass.
    void WithDialogs(std::function<void(QDialog&)> act) {
        user_.setInterval(10);
        QObject::connect(&user_, &QTimer::timeout, &user_, [this, act = std::move(act)] {
            if (platform.desktop.pointer == platform::MousePointer::hourglass)
                return;
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                act(*dialog);
        });
        user_.start();
    }

    static void ThreePages(platform::Printer& printer) {
        for (int page = 1; page <= 3; ++page) {
            if (page > 1)
                printer.NewPage();
            printer.PrintText("This is page " + std::to_string(page));
        }
    }

    platform::QtPrinting printing;

private:
    QTimer user_;
};
