#pragma once

#include "files/Recording.h"
#include "screens/controls/EventGuard.h"

#include <QObject>
#include <QPointer>

#include <filesystem>

class Report;

/// The report that is opened on the file being recorded, and what it means for the recording that
/// it shows this file or another.
class LiveReport : public QObject {
    Q_OBJECT

public:
    /// The recording must outlive it.
    explicit LiveReport(FileOpr::Recording& recording, QObject* parent = nullptr);
    ~LiveReport() override;

    /// Brings the report to the front, showing the target with all records so far.
    void Show();

    /// Brings the report to the front, showing this file.
    void Open(const std::filesystem::path& file);

    /// False while it loads, which it says itself; true also where none is open.
    bool Close();

    /// An automatic run has begun or ended.
    void ShowRun();

private:
    void Create();
    void BringToFront();
    void ReportShows(const std::filesystem::path& file);
    void ReportClosed();

    FileOpr::Recording& recording_;
    EventGuard guard_{"Unexpected Error - "};
    QPointer<Report> report_;
    std::filesystem::path shown_; ///< what the report shows
    bool opening_ = false;
};
