#pragma once

#include "platform/qt/SimulatedInstrument.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"
#include "screens/frmSimulated/SimulatedChannel.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>

#include <memory>

namespace Ui {
class frmSimulated;
}

/// What the simulated instrument measures, and how well it answers: a window that stays open beside
/// the screens, so that the electrodes can be dipped into other solutions meanwhile.
class frmSimulated : public QDialog {
    Q_OBJECT

public:
    enum Button { apply, setFault, pullCable, putCableBack, endInstrument, closeWindow };

    /// For the instrument on port `port`, which must outlive the window. Begins with the electrodes
    /// of the setup page.
    frmSimulated(platform::SimulatedInstrument& instrument, int port, QWidget* parent = nullptr);
    ~frmSimulated() override;

    /// What makes the instrument such as the window shows it.
    QStringList CommandsAtStart();

private:
    void ShowChannel(std::size_t channel, const SimulatedChannel& shown);
    void ShowUnits(std::size_t channel);
    void cboElectrode_Click(std::size_t Index);
    void cboFault_Click();
    void cmdBtn_Click(std::size_t Index);
    void instrument_Answered(const QString& command, bool ok, const QString& text);
    SimulatedChannel ChannelOf(std::size_t channel) const;
    void Apply();
    void SetFault();
    void Send(const QString& command);

    platform::SimulatedInstrument& instrument_;
    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmSimulated> ui_;
    ControlArray<QComboBox> cboElectrode;
    ControlArray<QComboBox> cboContent;
    ControlArray<QLineEdit> txtAmount;
    ControlArray<QComboBox> cboUnit;
    ControlArray<QLineEdit> txtTemperature;
    ControlArray<QPushButton> cmdBtn;
    QMap<QString, QString> inForce_; ///< by subject, the command that the instrument took last
};
