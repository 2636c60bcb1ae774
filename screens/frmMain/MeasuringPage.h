#pragma once

#include "base/Channels.h"
#include "chem/MeasuringCycle.h"
#include "files/MeasurementRecord.h"
#include "link/ReadingSeries.h"
#include "screens/controls/EventGuard.h"
#include "screens/controls/FormTimer.h"
#include "screens/frmMain/WatchedReadings.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ReadingsTable;
class RecordingGroup;

namespace FileOpr {
class MeasuringRun;
}
namespace Ui {
class MeasuringPage;
}

/// The page that shows the live readings and records them.
class MeasuringPage : public QWidget {
    Q_OBJECT

public:
    /// What the run button does next.
    enum class RunState {
        start,  ///< nothing is read: "&Start"
        record, ///< "&Record"
        stop,   ///< an automatic run goes on: "&Stop"
    };

    using Selection = WatchedReadings::Selection;

    explicit MeasuringPage(QWidget* parent = nullptr);
    ~MeasuringPage() override;

    /// The run is what the page records; it must outlive the page.
    void Load(FileOpr::MeasuringRun& run);

    /// The room in which nothing of it is out of sight.
    QSize WholeSize() const;

    /// Begins to read and show the selected channels.
    void Enter(const Selection& selected);

    /// Reading begins, anew or after an exit that was declined.
    void StartReading();

    /// Ends reading and moves the records into their file; a failure is said, and they wait.
    void Leave();

    RunState State() const;

    /// The hourglass stands: the first averages of a series are awaited.
    bool IsBusy() const;

    void RunPressed();

    /// Its recording, with the live report.
    RecordingGroup& RecordingControls() const;

    /// Keeps what the analyst has chosen here. Returns messages as SaveSettings does.
    std::vector<std::string> SaveChoices() const;

    void AveragingPressed();

    /// Ends reading and recording, on exit; true when it was reading.
    bool EndWork();

Q_SIGNALS:
    /// The run button's state or the target may have changed.
    void RunChanged();

    /// What the status line has to say; an empty text clears it.
    void StatusChanged(const QString& text);

    /// Another averaging number was chosen.
    void AveragingChanged(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    /// Of what moment the values are that the page shows.
    enum class Supply {
        current,
        ended, ///< reading has stopped at a failure
        lost,  ///< the instrument does not answer; it is asked on
    };

    void ConnectEvents();
    void StopReading();
    void tmrRead_Timer();
    void tmrTime_Timer();
    void ShowAverages(std::span<const float, cyclePositions> averages);
    void ReadingsLost();
    QStringList StatusParts() const;
    void ShowStatus();
    void ShowNotice();
    void TakeUpPalette();
    void TakeNoteOfAlarm(std::size_t channel);
    void cmdAcknowledge_Click();
    void TakeRemark(const QString& text);
    void chkResume_Click(bool checked);
    void cmdLimits_Click();
    void cmdCheck_Click();
    void cmdNewFile_Click();
    void ReadingFailed();
    std::optional<FileOpr::DisplayedChannels> DisplayedNow() const;

    std::unique_ptr<Ui::MeasuringPage> ui_;
    FileOpr::MeasuringRun* run_ = nullptr; ///< from Load on
    EventGuard guard_{"Unexpected Error - "};
    ReadingsTable* table_;
    std::optional<WatchedReadings> readings_; ///< of the table
    QTimer tmrRead;
    QTimer tmrTime;
    FormTimer readTimer_{tmrRead};
    ReadingSeries series_{readTimer_, ReadingSeries::measuringPace};

    std::optional<MeasuringCycle::Source> cycle_; ///< while the page is shown
    bool timeTickAtWork_ = false;
    bool lessMotion_ = false; ///< the title stands still while the instrument is read
    Supply supply_ = Supply::current;
    /// What the page shows of each channel; of no use while nothing is read.
    std::array<ChannelDisplay::Values, maxChannels> values_{};
    QString problem_; ///< why a position could not be converted
    QString remark_;  ///< what endangers the run
    QString statusShown_;
};
