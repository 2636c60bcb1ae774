#pragma once

#include "screens/controls/CalibrationForm.h"

#include <QCheckBox>

#include <memory>
#include <vector>

namespace Ui {
class SimultCalib;
}

/// Calibration of several electrodes of the same kind in one vessel: the channels are chosen, then
/// the points are read for all of them at once, then each channel's summary is shown.
class SimultCalib : public CalibrationForm {
    Q_OBJECT

public:
    explicit SimultCalib(QWidget* parent = nullptr);
    ~SimultCalib() override;

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

private:
    enum class Step { channels, points, summary };

    void Form_Load();
    void ConnectEvents();
    void ShowInstructions();

    void chkSimult_Click(int Index);
    void tabChannel_Click();

    void NextOrBack();
    void ChooseChannels();
    void StartSession(const std::string& electrode, int firstChannel);
    void StopButton();
    void AskAveraging();

    void ShowStep(Step step);
    void WidenForChannels();
    void ShowButtons();
    void ShowPoint(int point);
    void ShowChannel(int channel);
    QString ReadingText(int channel, int point) const;
    bool IsLastSummary() const;
    std::vector<int> TickedChannels() const;
    bool TakesPart(int channel) const;

    std::unique_ptr<Ui::SimultCalib> ui_;
    ControlArray<QCheckBox> chkSimult;
    ControlArray<QLabel> lblHead;
    ControlArray<QLabel> lblDat;
    ControlArray<QLineEdit> txtDat;
    ControlArray<QLabel> lblSig; ///< point * 8 + channel

    Step step_ = Step::channels;
    std::string electrode_;                             ///< of the session
    std::vector<CalibrationSession::Outcome> outcomes_; ///< one for each channel of the session
};
