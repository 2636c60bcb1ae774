#include "app/program/theMain.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtDialogs.h"
#include "platform/qt/QtPlaces.h"
#include "platform/qt/QtPrinting.h"
#include "platform/qt/QtUserStore.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("vantrel");
    QApplication::setApplicationDisplayName("Vantrel Data Acquisition");
    QApplication::setDesktopFileName("vantrel");

    platform::QtDialogs dialogs;
    platform::QtDesktop desktop;
    platform::QtUserStore userStore;
    platform::QtPlaces places;
    platform::QtPrinting printing;
    const auto clock = platform::MakeClock();
    const auto files = platform::MakeFileStore();
    const auto profile = platform::MakeProfileFile(places.ConfigurationFolder() / "Vantrel.ini");
    const platform::Services services{dialogs,   desktop, *clock, *profile,
                                      userStore, places,  *files,  printing};
    platform::Install(&services);

    theMain::Program program;
    program.Main();
    return QApplication::exec();
}
