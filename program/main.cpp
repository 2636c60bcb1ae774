#include "platform/qt/QtPlaces.h"
#include "program/SystemServices.h"
#include "program/theMain.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("vantrel");
    QApplication::setDesktopFileName("vantrel");

    platform::QtPlaces places;
    const theMain::SystemServices services(places);
    theMain::Program program;
    program.Main();
    return QApplication::exec();
}
