#include "walk/Supervisor.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QtMessageHandler tellUsually = nullptr;

/// Where there is no screen, each window that is raised brings a line, and what broke drowns in
/// them.
void Tell(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith("This plugin does not support"))
        tellUsually(type, context, text);
}

} // namespace

int main(int argc, char* argv[]) {
    if (!walk::IsToWalk())
        return walk::Supervise(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    // Nothing of the user's is reached: neither his folders nor his printers nor his programs.
    const QTemporaryDir home;
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_DOCUMENTS_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    qputenv("CUPS_SERVER", home.filePath("no-print-server").toLocal8Bit());
    qputenv("PATH", home.filePath("no-programs").toLocal8Bit());
    qputenv("VANTREL_WALK_HOME", home.path().toLocal8Bit());
    QDir::setCurrent(home.path());
    tellUsually = qInstallMessageHandler(Tell);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
