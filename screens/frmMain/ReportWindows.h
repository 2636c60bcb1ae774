#pragma once

#include "files/Recording.h"
#include "screens/controls/EventGuard.h"

#include <QObject>
#include <QPointer>

#include <filesystem>
#include <vector>

class Report;

/// The report's windows: the one that the program opens, and those that are opened from it beside
/// it. While one of them shows the file being recorded, the recording goes straight into it.
class ReportWindows : public QObject {
    Q_OBJECT

public:
    /// The recording must outlive it.
    explicit ReportWindows(FileOpr::Recording& recording, QObject* parent = nullptr);
    ~ReportWindows() override;

    /// Brings the report to the front, showing the target with all records so far.
    void Show();

    /// Brings the report to the front, showing this file.
    void Open(const std::filesystem::path& file);

    /// Closes all windows. False while one loads, which it says itself; all stay then.
    bool Close();

    /// An automatic run has begun or ended.
    void ShowRun();

private:
    Report& Make();
    Report& BringToFront();
    void OpenBeside(Report& origin, const std::filesystem::path& file);
    void ReportShows(const std::filesystem::path& file);
    void ReportClosed();
    bool AnyShowsTarget() const;

    FileOpr::Recording& recording_;
    EventGuard guard_{"Unexpected Error - "};
    QPointer<Report> first_;                ///< hidden when closed, and used again
    std::vector<QPointer<Report>> windows_; ///< the first and those beside it that are open
    bool opening_ = false;
};
