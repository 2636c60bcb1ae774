#include <QApplication>
#include <QDir>
#include <QFont>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    ::testing::InitGoogleTest(&argc, argv);
    // Wine hands on no variable of Qt's, but this one.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", qgetenv("VANTREL_TOUR_PLATFORM"));
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
#ifdef Q_OS_WIN // without a display Qt chooses any font
    QApplication::setFont(QFont("DejaVu Sans", 9));
#endif
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
