#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/CalibrationSession.h"
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

/// Calibration of the electrode of one channel, Measure::ChannelToCalibrate. While the form is
/// open the channel's record may hold its unit and slopes already; a calibration that is given up
/// puts the record back as it was.
class frmCalib : public QDialog {
    Q_OBJECT

public:
    /// Indices of cmdSys.
    enum SysButton { mainButton, secondButton, helpButton, finishButton, closeButton };

    explicit frmCalib(QWidget* parent = nullptr);
    ~frmCalib() override;

    /// Escape and the window's close button ask as the close buttons do.
    void reject() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(int channel);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void WireControls();
    void Form_Load();
    void cboCalibPtrs_Click();
    void cboUnits_Click();
    void cmdSys_Click(int Index);
    void txtEntry_GotFocus(int Index);
    void txtEntry_LostFocus();
    void txtEntry_Change(int Index);
    void tmrRead_Timer();
    void tmrElapsed_Timer();

    /// Asks where something would be lost and stores what is finished; false keeps the form open.
    bool Form_QueryUnload();

    void MainButton();
    void ReadPoint();
    void RecordPoint();
    void ShowSummary();
    void PrintSummary();
    void SecondButton();
    void ClearPoint();
    void ShowEntryPage();
    void Refuse(int point);

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
    int channel_;
    CalibrationRecord before_; ///< the channel's record when the form was opened
    CalibrationSession::Outcome outcome_;
};
