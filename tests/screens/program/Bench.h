#pragma once

#include "platform/FileStore.h"
#include "screens/desktop/PrivateBus.h"
#include "screens/program/ScreenReader.h"
#include "screens/program/XServer.h"
#include "support/FakePlatform.h"
#include "support/InstrumentProcess.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <vector>

/// A bench with a simulated instrument and a desktop: an X server, a session bus and a screen
/// reader of their own, on which the program runs as it has been built. Its settings hold a project
/// that is ready to measure.
class Bench : public testing::Test {
protected:
    /// The simulated instrument is started with these arguments.
    explicit Bench(QSize screen = {1280, 1024},
                   const std::vector<std::string>& instrumentArguments = {});
    ~Bench() override;

    QString Folder() const { return QString::fromStdString(folder.Path().string()); }

    /// Starts the program and leaves the splash.
    void Start(const QStringList& arguments = {});

    /// Lines for the end of the settings file; before the program starts.
    void AddSettings(const QByteArray& lines) const;

    /// From the setup page; returns when readings are shown.
    void Measure() const;

    /// Leaves the program, so that it takes its temporary file away; no dialog may be open.
    void TearDown() override;

    /// From now on no file of the program grows beyond so many bytes, as on a full disk.
    void LimitFilesTo(rlim_t bytes) const;
    void LiftLimitOfFiles() const { LimitFilesTo(RLIM_INFINITY); }

    /// Answers the message box that asks this with "Yes".
    void Confirm(const QString& question) const;

    /// On the measuring page: presses "Record" and answers the file dialog.
    void Record(const QString& file) const;

    /// Presses the splash away; true when the program's window is there.
    bool LeaveSplash() const;

    /// Recordings that others have left behind, held as if they went on: the program offers them to
    /// nobody.
    std::vector<std::unique_ptr<platform::FileLock>> othersRecordings;

    fake::TemporaryFolder folder;
    XServer server;
    QProcessEnvironment environment; ///< of the desktop, and of the program on it
    PrivateBus bus;
    ScreenReader reader;
    InstrumentProcess instrument;
    QProcess program;
};
