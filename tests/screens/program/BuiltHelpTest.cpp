// Every Help of the program as it has been built: the right text opens, in the desktop's editor or,
// where none is installed, in a window of the program.

#include "screens/program/Bench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

class BuiltHelp : public Bench {
protected:
    /// The program finds no other programs than those in a folder of the test's own.
    BuiltHelp() {
        QDir().mkdir(Programs());
        environment.insert("PATH", Programs());
    }

    QString Programs() const { return Folder() + "/programs"; }

    /// A text editor that notes what it is asked to open.
    void InstallEditor() const {
        QFile editor(Programs() + "/gedit");
        ASSERT_TRUE(editor.open(QIODevice::WriteOnly));
        editor.write("#!/bin/sh\necho \"$1\" >> '" + Folder().toLocal8Bit() + "/opened'\n");
        editor.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    /// Two electrodes of a kind, so that they can be calibrated in one vessel.
    void SetUpPair() const {
        QFile settings(Folder() + "/Vantrel/Vantrel.ini");
        ASSERT_TRUE(settings.open(QIODevice::ReadWrite));
        const QByteArray pair = settings.readAll().replace("NO3", "Ca");
        settings.resize(0);
        settings.write(pair);
    }

    void ExpectInWindow(const char* helpFile, int windows) const {
        QFile file(QFileInfo(VANTREL_PROGRAM).path() + "/" + helpFile);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << helpFile;
        const QString text = QString::fromUtf8(file.readAll()).trimmed();
        int shown = 0;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                shown = 0;
                for (const SpokenControl& each : reader.Controls())
                    shown += each.role == "text" && each.text.trimmed() == text ? 1 : 0;
                return shown == windows;
            },
            20000))
            << helpFile << " in " << shown << " windows";
    }

    void ExpectOpened(const QStringList& helpFiles) const {
        QStringList opened;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                QFile file(Folder() + "/opened");
                opened = file.open(QIODevice::ReadOnly)
                             ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
                             : QStringList();
                for (QString& each : opened)
                    each = QFileInfo(each).fileName();
                return opened == helpFiles;
            },
            20000))
            << opened.join(' ').toStdString();
    }

    void PressOnMain() const { reader.Press("menu item", "Help on this page"); }

    void PressOnViewer() const {
        reader.Press("push button", "Report");
        reader.Press("menu item", "Help", "Report");
    }

    void PressOnHistory() const {
        reader.Press("menu item", "History...");
        reader.Press("push button", "Help", "History");
    }

    /// Opens the calibration by this button, and presses Help in its window: that of another one
    /// may be about to close.
    void PressOnCalibration(const QString& button, const QString& window) const {
        reader.Press("push button", button);
        reader.Press("push button", "Help", window);
    }

    void LeaveCalibration(const QString& question) const {
        reader.Press("push button", "Close");
        Confirm(question);
    }

    const QString quitOne = "The calibration process has not been achieved yet.\n"
                            "Would you like to quit the process?";
    const QString quitSeveral = "Calibration is not completed, quit anyway?";
};

} // namespace

TEST_F(BuiltHelp, Without_an_editor_every_Help_shows_its_text_in_a_window) {
    SetUpPair();
    Start();
    PressOnMain();
    ExpectInWindow("SetupHlp.txt", 1);
    PressOnCalibration("Calibrate channel 1", "Electrode Calibration");
    ExpectInWindow("CalibHlp.txt", 1);
    LeaveCalibration(quitOne);
    PressOnCalibration("Simultaneous Calibration...", "Simultaneous Calibration");
    ExpectInWindow("CalibHlp.txt", 2);
    LeaveCalibration(quitSeveral);
    Measure();
    PressOnMain();
    ExpectInWindow("AcqurHlp.txt", 1);
    PressOnViewer();
    ExpectInWindow("ViewHlp.txt", 1);
    PressOnHistory();
    ExpectInWindow("HistHlp.txt", 1);
}

TEST_F(BuiltHelp, With_an_editor_every_Help_opens_its_text_there) {
    InstallEditor();
    SetUpPair();
    Start();
    PressOnMain();
    ExpectOpened({"SetupHlp.txt"});
    PressOnCalibration("Calibrate channel 1", "Electrode Calibration");
    ExpectOpened({"SetupHlp.txt", "CalibHlp.txt"});
    LeaveCalibration(quitOne);
    PressOnCalibration("Simultaneous Calibration...", "Simultaneous Calibration");
    ExpectOpened({"SetupHlp.txt", "CalibHlp.txt", "CalibHlp.txt"});
    LeaveCalibration(quitSeveral);
    Measure();
    PressOnMain();
    ExpectOpened({"SetupHlp.txt", "CalibHlp.txt", "CalibHlp.txt", "AcqurHlp.txt"});
    PressOnViewer();
    ExpectOpened({"SetupHlp.txt", "CalibHlp.txt", "CalibHlp.txt", "AcqurHlp.txt", "ViewHlp.txt"});
    PressOnHistory();
    ExpectOpened({"SetupHlp.txt", "CalibHlp.txt", "CalibHlp.txt", "AcqurHlp.txt", "ViewHlp.txt",
                  "HistHlp.txt"});
}
