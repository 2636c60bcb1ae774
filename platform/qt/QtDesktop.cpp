#include "platform/qt/QtDesktop.h"

#include "base/RunTimeError.h"
#include "platform/qt/DesktopPrograms.h"
#include "platform/qt/HelpWindow.h"
#include "platform/qt/MotionWish.h"
#include "platform/qt/SleepInhibitor.h"
#include "platform/qt/Text.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace platform {

namespace {

void Start(const QString& program, const QStringList& arguments) {
    if (!QProcess::startDetached(program, arguments))
        throw RunTimeError("Starting " + Text::ForMessage(QFileInfo(program).fileName()) +
                           ": the program did not start");
}

} // namespace

void QtDesktop::SetMousePointer(MousePointer pointer) {
    if (pointer == pointer_)
        return;
    pointer_ = pointer;
    if (pointer == MousePointer::hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtDesktop::ProcessPendingEvents() {
    QApplication::processEvents();
}

void QtDesktop::ShowHelpText(const std::filesystem::path& helpFile) {
    const QString name = Text::FromPath(helpFile);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError("Opening the help text " + Text::ForMessage(QFileInfo(name).fileName() +
                                                                       ": " + file.errorString()));
    const QString editor = TextEditor();
    if (editor.isEmpty())
        ShowHelpWindow(QFileInfo(name).fileName(), QString::fromUtf8(file.readAll()));
    else
        Start(editor, {name});
}

void QtDesktop::ShowCalculator() {
    if (BringToFront("Calculator"))
        return;
    const QString calculator = Calculator();
    if (calculator.isEmpty())
        throw RunTimeError("Starting the calculator: none is installed on this computer");
    Start(calculator, {});
}

void QtDesktop::ShowNotepad() {
    if (BringToFront("Notepad"))
        return;
    const QString editor = TextEditor();
    if (editor.isEmpty())
        throw RunTimeError("Starting the text editor: none is installed on this computer");
    Start(editor, {});
}

bool QtDesktop::WantsLessMotion() const {
    return UserWantsLessMotion();
}

std::unique_ptr<WakeLock> QtDesktop::KeepAwake(const std::string& reason) {
    return InhibitSleep(Text::ToQt(reason));
}

} // namespace platform
