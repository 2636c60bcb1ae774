#include "walk/SettingsRule.h"
#include "walk/built/BuiltWalk.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

/// So soon one who sees all that changes hears of it: well before the next reading.
constexpr int promptly_ms = 150;

/// Without the size of the window, which the window manager touches where it exceeds the screen.
QByteArray OwnSettingsIn(const QString& file) {
    static const QRegularExpression sizes("(Width|Height)=\\d+");
    return QString::fromLatin1(walk::SettingsIn(file)).remove(sizes).toLatin1();
}

} // namespace

/// The program runs, and has answered in time.
bool BuiltWalk::IsAlive() {
    if (const auto still = listener_->Standstill()) {
        walk::Broken("no standstill", still->toStdString() + ", " + Place());
        return false;
    }
    if (program.state() == QProcess::Running && !program.waitForFinished(0))
        return true;
    walk::Broken("no crash",
                 "the program has ended with " + std::to_string(program.exitCode()) +
                     (program.exitStatus() == QProcess::CrashExit ? " by a signal, " : ", ") +
                     Place());
    return false;
}

void BuiltWalk::JudgeBox(const Scene& scene) {
    const auto box = scene.Box();
    if (!box || box->at == box_)
        return;
    const QString text = scene.TextOf(*box);
    if (text == boxText_ && steps_ == stepsAtBox_)
        walk::Broken("no box comes twice without something done",
                     text.toStdString() + ", " + Place());
    ++boxes_;
    box_ = box->at;
    boxText_ = text;
    stepsAtBox_ = steps_;
}

void BuiltWalk::JudgeSettings() {
    const QString settings = Folder() + "/Vantrel/Vantrel.ini";
    if (unfinished_) { // what it would have saved at its end
        Begin();
        Leave();
        unfinished_ = false;
        JudgeFiles();
    }
    const QByteArray before = OwnSettingsIn(settings);
    Begin();
    Leave();
    const QByteArray after = OwnSettingsIn(settings);
    if (!walk::AreKept(before, after))
        walk::Broken("settings that nobody touched keep their bytes",
                     walk::Difference(before, after) + "\n" + Place());
}

void BuiltWalk::JudgeFiles() {
    const bool allHeard = heardAll_ && listener_->LongestWait_ms() < promptly_ms;
    QStringList missing = values_.FilesRecordedInto();
    QDirIterator files(Folder(), {"*.4ch"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = files.next();
        missing.removeAll(files.fileName());
        const std::string faults = values_.Faults(name.toStdString(), allHeard);
        if (!faults.empty())
            walk::Broken("what was recorded is in its file, as it was shown",
                         name.toStdString() + faults + "\n" + Place());
    }
    if (!missing.isEmpty())
        walk::Broken("what was recorded is in its file, as it was shown",
                     "there is no " + missing.join(", ").toStdString() + "\n" + Place());
}

void BuiltWalk::JudgeValues() {
    const QStringList madeUp = values_.MadeUp();
    if (!madeUp.isEmpty())
        walk::Broken("every value shown belongs to a frame",
                     madeUp.join("\n").toStdString() + "\n" + Place());
}
