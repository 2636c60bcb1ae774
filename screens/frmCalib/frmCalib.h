#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/CalibrationSession.h"
#include "screens/calibration/PointEntry.h"
#include "screens/calibration/PointReading.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <memory>
#include <string>

class StandardFields;

namespace Ui {
class frmCalib;
}

/// Calibration of the electrode of one channel. While the form is open the channel's record may
/// hold its unit and slopes already; a calibration that is given up puts the record back as it was.
class frmCalib : public QDialog {
    Q_OBJECT

public:
    /// Indices of cmdSys.
    enum SysButton { mainButton, secondButton, helpButton, finishButton, closeButton };

    /// Calibrates this channel (0-based).
    explicit frmCalib(std::size_t channel, QWidget* parent = nullptr);
    ~frmCalib() override;

    /// Escape and the window's close button ask as the close buttons do.
    void reject() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(std::size_t channel);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void WireControls();
    void Form_Load();
    void cboUnits_Click();
    void cmdSys_Click(std::size_t Index);
    void tmrElapsed_Timer();

    /// Asks where something would be lost and stores what is finished; false keeps the form open.
    bool Form_QueryUnload();

    void MainButton();
    void RecordPoint();
    void ShowSummary();
    void PrintSummary();
    void SecondButton();
    void ClearPoint();
    void ShowEntryPage();

    void ShowState();
    void ShowButtons();
    bool OnSummaryPage() const;

    StandardFields& Standards() const;
    CalibrationRecord& Record() const;
    std::string ElectrodeName() const;

    std::unique_ptr<Ui::frmCalib> ui_;
    EventGuard guard_{"Unexpected Error - "};
    ControlArray<QLabel> lblInfo;
    ControlArray<QPushButton> cmdSys;

    CalibrationSession session_;
    PointReading reading_{session_, *this};
    const std::size_t ChannelToCalibrate;
    CalibrationRecord before_; ///< the channel's record when the form was opened
    CalibrationSession::Outcome outcome_;
    std::unique_ptr<PointEntry> entry_;
};
