#pragma once

#include "chem/CalibrationRecord.h"
#include "screens/controls/CalibrationForm.h"

#include <memory>

namespace Ui {
class frmCalib;
}

/// Calibration of the electrode of one channel, Measure::ChannelToCalibrate. While the form is
/// open the channel's record may hold its unit and slopes already; a calibration that is given up
/// puts the record back as it was.
class frmCalib : public CalibrationForm {
    Q_OBJECT

public:
    explicit frmCalib(QWidget* parent = nullptr);
    ~frmCalib() override;

protected:
    void cboCalibPtrs_Click() override;
    void cboUnits_Click() override;
    void cmdSys_Click(int Index) override;
    bool Form_QueryUnload() override;
    void ShowState() override;
    void RecordPoint() override;
    void ShowSummary() override;
    void PrintSummary() override;
    void EntryEntered(int point) override;
    void EntryChanged() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void FillStoredPoints();
    void ShowPrompts();

    void SecondButton();
    void ClearPoint();
    void ShowEntryPage();

    bool OnSummaryPage() const;
    void ShowButtons();
    void ShowPoint(int point);
    QString ReadingText(int point) const;
    QString PointMark(int point) const;

    CalibrationRecord& Record() const;
    std::string ElectrodeName() const;

    std::unique_ptr<Ui::frmCalib> ui_;
    ControlArray<QLineEdit> txtEntry;
    ControlArray<QLabel> lblReading;

    int channel_;
    CalibrationRecord before_; ///< the channel's record when the form was opened
    CalibrationSession::Outcome outcome_;
};
