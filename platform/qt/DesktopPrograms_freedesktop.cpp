#include "platform/qt/DesktopPrograms.h"

#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {

QString FirstInstalled(const QStringList& programs) {
    for (const QString& program : programs) {
        QString path = QStandardPaths::findExecutable(program);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

} // namespace

QString TextEditor() {
    static const QStringList editors = {
        "gnome-text-editor", "gedit",   "kate",    "kwrite",       "mousepad", "pluma", "xed",
        "featherpad",        "leafpad", "l3afpad", "deepin-editor"};
    return FirstInstalled(editors);
}

QString Calculator() {
    static const QStringList calculators = {
        "gnome-calculator", "kcalc",       "mate-calc",         "galculator", "qalculate-gtk",
        "qalculate-qt",     "speedcrunch", "deepin-calculator", "xcalc"};
    return FirstInstalled(calculators);
}

bool BringToFront(const QString& windowTitle) {
    const QString windowManagerControl = QStandardPaths::findExecutable("wmctrl");
    if (windowManagerControl.isEmpty())
        return false;
    return QProcess::execute(windowManagerControl, {"-F", "-a", windowTitle}) == 0;
}

} // namespace platform
