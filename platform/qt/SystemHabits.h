#pragma once

#include <QStandardPaths>
#include <QString>

namespace platform {

/// The folder of the user's in which the system's users look for what they have recorded.
QStandardPaths::StandardLocation RecordingsLocation();

/// The system has file dialogs of its own that its users know; elsewhere those of Qt are shown.
bool HasFileDialogs();

/// Before the application is there: it is to take up the system's dark colours where its user wants
/// them.
void AskForDarkColours();

/// The style that draws with light pictures of the system's whatever the palette says; empty where
/// there is none.
QString StyleThatStaysLight();

} // namespace platform
