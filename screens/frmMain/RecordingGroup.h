#pragma once

#include "files/ReadingGaps.h"
#include "files/Recording.h"
#include "screens/controls/EventGuard.h"
#include "screens/frmMain/ReportWindows.h"
#include "settings/MeasuringChoices.h"

#include <QGroupBox>
#include <QStringListModel>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class RecordingGroup;
}

/// The measuring page's recording: mode, period and comment, the counter, the line that tells how
/// it stands, and the report's windows.
class RecordingGroup : public QGroupBox {
    Q_OBJECT

public:
    /// The texts that the page shows at this moment; nothing while no values are being read.
    using TakeDisplayed = std::function<std::optional<FileOpr::DisplayedChannels>()>;

    explicit RecordingGroup(QWidget* parent = nullptr);
    ~RecordingGroup() override;

    /// The run must outlive the group.
    void Load(FileOpr::MeasuringRun& run, const mWinInit::MeasuringChoices& choices);

    /// What is chosen at this moment.
    mWinInit::MeasuringChoices Choices() const;

    /// The page is entered: counter and comment start afresh.
    void Reset();

    /// "&Record": one record and in automatic mode a run; by hand, where that is chosen, not before
    /// the readings are steady or at a second press.
    void Press(const TakeDisplayed& takeDisplayed, bool steady);

    /// The record that waits for this is taken.
    void ReadingsAreSteady(const TakeDisplayed& takeDisplayed);

    /// A tick of the clock: in an automatic run, records when the period is over.
    void Tick(const TakeDisplayed& takeDisplayed);

    void Stop();
    bool IsAutomaticOn() const { return recording_->IsAutomaticOn(); }

    /// The page is left: what was recorded by hand has come to its end.
    void Leave() { recording_->Leave(); }

    /// Reading has ended at a failure, and with it the run.
    void LinkFailed();

    /// The run stays in force while the instrument does not answer.
    bool IsToResume() const;
    void ReadingsLost(const LocalTime& since);
    void ReadingsReturned(const LocalTime& now);

    /// Nothing is read any more.
    void ReadingsEnded();

    /// The times without readings that no record tells of yet.
    std::string GapText() const { return gaps_.Text(); }

    /// What setup and calibration now tell differently from the target's header.
    std::string Notice() const;

    /// What waits goes into the target; the next record asks for another one.
    void NewFile();

    void ShowAveraging(const QString& text);

    /// Asks for the averaging number of the measurement and stores and shows it. Empty where the
    /// analyst gave none that can be used.
    QString AskAveraging();

    void ShowReport() { report_->Show(); }
    void OpenReport(const std::filesystem::path& file) { report_->Open(file); }
    bool CloseReport() { return report_->Close(); }

Q_SIGNALS:
    /// The target or the state of the run may have changed.
    void RunChanged();

    /// Something endangers the run.
    void Remarked(const QString& text);

    void ResumeChosen(bool resume);

private:
    void Record(const TakeDisplayed& takeDisplayed);
    FileOpr::Recording::TakeEntry Taking(const TakeDisplayed& takeDisplayed) const;
    void AwaitSteady(const TakeDisplayed& takeDisplayed);
    void TakePressBack();
    void ShowOutcome(const FileOpr::Recording::Outcome& outcome);
    void ShowRecorded();
    void ShowRun();
    void ShowProgress();
    QString ProgressText() const;
    void OfferComments();
    const std::filesystem::path& Target() const;
    std::string TargetName() const;

    std::unique_ptr<Ui::RecordingGroup> ui_;
    EventGuard guard_{"Unexpected Error - "};
    std::optional<FileOpr::Recording> recording_; ///< from Load on
    FileOpr::ReadingGaps gaps_;
    std::optional<ReportWindows> report_; ///< from Load on
    mWinInit::MeasuringChoices choices_;
    QStringListModel comments_; ///< offered while a comment is typed
    bool awaitsSteady_ = false; ///< a press waits for steady readings
};
