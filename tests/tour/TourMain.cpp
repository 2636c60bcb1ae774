#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    ::testing::InitGoogleTest(&argc, argv);
    // Desktop folders of the tour's own: a user's settings are never touched. For pictures that
    // show its folders they can be put into a home of a given name.
    const QTemporaryDir temporary;
    const QDir home(qEnvironmentVariable("VANTREL_TOUR_HOME", temporary.path()));
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        const QString folder =
            home.filePath(QString(variable).toLower().remove("xdg_").remove("_home"));
        QDir().mkpath(folder);
        qputenv(variable, folder.toLocal8Bit());
    }
    // No print queue: a tour must not come out of somebody's printer. The program prints to PDF
    // then.
    qputenv("CUPS_SERVER", home.filePath("no-print-server").toLocal8Bit());
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
