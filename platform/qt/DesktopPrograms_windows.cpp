#include "platform/qt/DesktopPrograms.h"

#include <windows.h>

namespace platform {

QString TextEditor() {
    return "NotePad.exe";
}

QString Calculator() {
    return "Calc.exe";
}

bool BringToFront(const QString& windowTitle) {
    const HWND window = FindWindowW(nullptr, reinterpret_cast<const wchar_t*>(windowTitle.utf16()));
    if (window == nullptr)
        return false;
    ShowWindow(window, SW_SHOWNORMAL);
    return BringWindowToTop(window) != 0;
}

} // namespace platform
