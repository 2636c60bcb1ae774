#pragma once

#include "chem/CalibrationSession.h"
#include "screens/SimultCalib/StepButtons.h"
#include "screens/calibration/PointEntry.h"
#include "screens/calibration/PointReading.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QPushButton>

#include <memory>
#include <optional>
#include <string>

class StandardFields;

namespace Ui {
class SimultCalib;
}

/// Calibration of several electrodes of the same kind in one vessel: the channels are chosen, then
/// the points are read for all of them at once, then each channel's summary is shown.
class SimultCalib : public QDialog {
    Q_OBJECT

public:
    using enum StepButtons::Index; ///< of cmdSys

    explicit SimultCalib(QWidget* parent = nullptr);
    ~SimultCalib() override;

    /// Escape and the window's close button ask as the close buttons do.
    void reject() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(std::size_t channel);

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Step = StepButtons::Step;

    void WireControls();
    void Form_Load();
    void chkSimult_Click(std::size_t Index);
    void cboUnits_Click();
    void tabChannel_Click();
    void cmdSys_Click(std::size_t Index);
    void tmrElapsed_Timer();

    /// Asks where something would be lost and stores what is finished; false keeps the form open.
    bool Form_QueryUnload();

    void NextOrBack();
    void ChooseChannels();
    void StartSession(const std::string& electrode, std::size_t firstChannel);
    void MainButton();
    void RecordPoint();
    void StopButton();
    void AskAveraging();
    void ShowSummary();
    void FinishWhenAllShown();
    void GoBackToChannels();

    void ShowStep(Step step);
    void ShowTitles();
    void ShowState();
    StandardFields& Standards() const;

    std::unique_ptr<Ui::SimultCalib> ui_;
    EventGuard guard_{"Unexpected Error - "};
    ControlArray<QPushButton> cmdSys;

    CalibrationSession session_;
    PointReading reading_{session_, *this};
    std::unique_ptr<PointEntry> entry_;
    std::unique_ptr<StepButtons> buttons_;
    Step step_ = Step::channels;
    std::string electrode_; ///< of the session, empty before the channels are chosen
    std::optional<StandardUnit> unitBefore_; ///< chosen before the channels
};
