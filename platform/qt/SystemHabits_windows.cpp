#include "platform/qt/SystemHabits.h"

namespace platform {

QStandardPaths::StandardLocation RecordingsLocation() {
    return QStandardPaths::DocumentsLocation; // the data folder of programs is hidden there
}

bool HasFileDialogs() {
    return true;
}

} // namespace platform
