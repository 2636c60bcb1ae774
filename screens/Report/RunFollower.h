#pragma once

#include "files/LiveReport.h"
#include "files/MeasuringRun.h"
#include "report/ReportLoader.h"
#include "screens/controls/EventGuard.h"

#include <QObject>

/// Keeps the viewer up to date while its file is the one that is recorded into: what a record or a
/// flush brings into the file comes into the lists, and whether it is recorded right now is
/// noticed.
class RunFollower : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object.
    RunFollower(FileOpr::MeasuringRun& run, Mreport::ViewedFile& file,
                Mreport::ReportLoader& loader);

    /// Looks whether the file is recorded into and what it has got.
    void LookAgain();

Q_SIGNALS:
    /// The file has got records, and the lists have them.
    void Grown();

    /// The file has become, or is no longer, one that is recorded right now.
    void LiveChanged();

    /// A new run has begun under the file's name; said when what began it has ended.
    void BegunAnew();

private:
    void FileGrown();
    void TakeWhatIsNew();
    void NoticeLive();

    FileOpr::MeasuringRun& run_;
    Mreport::ViewedFile& file_;
    Mreport::ReportLoader& loader_;
    EventGuard guard_{"Unexpected error - "};
    FileOpr::LiveReport live_;
};
