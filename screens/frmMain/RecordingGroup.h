#pragma once

#include "files/Recording.h"
#include "screens/controls/EventGuard.h"
#include "screens/frmMain/LiveReport.h"

#include <QGroupBox>

#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class RecordingGroup;
}

/// The measuring page's recording: mode, period and comment, the counter, and the live report.
class RecordingGroup : public QGroupBox {
    Q_OBJECT

public:
    /// The texts that the page shows at this moment; nothing while no values are being read.
    using TakeDisplayed = std::function<std::optional<FileOpr::DisplayedChannels>()>;

    explicit RecordingGroup(QWidget* parent = nullptr);
    ~RecordingGroup() override;

    /// The run must outlive the group.
    void Load(FileOpr::MeasuringRun& run);

    /// The page is entered: counter and comment start afresh.
    void Reset();

    /// "&Record".
    void Record(const TakeDisplayed& takeDisplayed);

    /// A tick of the clock: in an automatic run, records when the period is over.
    void Tick(const TakeDisplayed& takeDisplayed);

    void Stop();
    bool IsAutomaticOn() const { return recording_->IsAutomaticOn(); }

    void ShowAveraging(const QString& text);
    QString AveragingText() const;

    void ShowReport() { report_->Show(); }
    bool CloseReport() { return report_->Close(); }

Q_SIGNALS:
    /// The target or the state of the run may have changed.
    void RunChanged();

private:
    FileOpr::Recording::TakeEntry Taking(const TakeDisplayed& takeDisplayed) const;
    void ShowOutcome(const FileOpr::Recording::Outcome& outcome);
    void ShowRun();

    std::unique_ptr<Ui::RecordingGroup> ui_;
    std::optional<FileOpr::Recording> recording_; ///< from Load on
    std::optional<LiveReport> report_;            ///< from Load on
};
