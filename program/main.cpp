#include "platform/System.h"
#include "platform/qt/QtPlaces.h"
#include "platform/qt/SystemHabits.h"
#include "platform/qt/Text.h"
#include "program/DarkPaletteStyle.h"
#include "program/SystemServices.h"
#include "program/theMain.h"

#include <QApplication>
#include <QFileInfo>

int main(int argc, char* argv[]) {
    platform::IgnoreSignalsOfWrites();
    platform::AskForDarkColours();
    QApplication application(argc, argv);
    QApplication::setApplicationName("vantrel");
    QApplication::setDesktopFileName("vantrel");
    const DarkPaletteStyle style(platform::StyleThatStaysLight());

    platform::QtPlaces places;
    const theMain::SystemServices services(places);
    theMain::Program program;
    // The file manager starts the program with the file that was opened in it.
    if (const QStringList arguments = QApplication::arguments(); arguments.size() > 1)
        program.ShowFile(Text::ToPath(QFileInfo(arguments.at(1)).absoluteFilePath()));
    program.Main();
    return QApplication::exec();
}
