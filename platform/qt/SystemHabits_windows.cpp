#include "platform/qt/SystemHabits.h"

namespace platform {

QStandardPaths::StandardLocation RecordingsLocation() {
    return QStandardPaths::DocumentsLocation; // the data folder of programs is hidden there
}

bool HasFileDialogs() {
    return true;
}

void AskForDarkColours() {
    constexpr auto platform = "QT_QPA_PLATFORM";
    if (!qEnvironmentVariableIsSet(platform))
        qputenv(platform, "windows:darkmode=2"); // frames and palette; without it, light ones
}

QString StyleThatStaysLight() {
    return QStringLiteral("windowsvista");
}

} // namespace platform
