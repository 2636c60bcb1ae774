#pragma once

#include <QString>

namespace platform {

/// Shows a text in a read-only window of the program, for desktops without a text editor.
void ShowHelpWindow(const QString& title, const QString& text);

} // namespace platform
