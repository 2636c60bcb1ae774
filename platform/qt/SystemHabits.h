#pragma once

#include <QStandardPaths>

namespace platform {

/// The folder of the user's in which the system's users look for what they have recorded.
QStandardPaths::StandardLocation RecordingsLocation();

/// The system has file dialogs of its own that its users know; elsewhere those of Qt are shown.
bool HasFileDialogs();

} // namespace platform
