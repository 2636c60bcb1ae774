#include "platform/qt/SystemHabits.h"

namespace platform {

QStandardPaths::StandardLocation RecordingsLocation() {
    return QStandardPaths::GenericDataLocation;
}

bool HasFileDialogs() {
    return false; // there are as many as desktops, and none looks alike
}

void AskForDarkColours() {} // the palette comes from the desktop

QString StyleThatStaysLight() {
    return {};
}

} // namespace platform
