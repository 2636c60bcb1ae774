#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A print server of the test's own on a loopback port, with one queue, "Lab", that keeps its last
/// job as a PDF file. This process and those that it starts print through it while it lives.
class CupsServer {
public:
    /// Fails the test where the server does not start.
    CupsServer();
    ~CupsServer();
    CupsServer(const CupsServer&) = delete;
    CupsServer& operator=(const CupsServer&) = delete;

    /// Waits until the queue has done all its jobs, then the file of the last one; an empty name
    /// where no job came.
    QString LastJob();

    int JobCount();

    /// An administrator's command, such as "cupsdisable Lab".
    QString Administer(const QString& program, const QStringList& arguments);

    void Stop();

private:
    void WriteConfiguration();
    QString Path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_{"/tmp/print-server-XXXXXX"}; ///< its paths may hold no blanks
    int port_ = 0;
    QProcess server_;
};
