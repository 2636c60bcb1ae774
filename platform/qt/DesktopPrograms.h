#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// The programs of the user's desktop, by the kind of system: the first that is installed, empty
/// where none is.
QString TextEditor();
QString Calculator();

/// Brings the window with this title to the front; false where there is none or the system does
/// not let a program do so.
bool BringToFront(const QString& windowTitle);

} // namespace platform
