#pragma once

#include "platform/SerialControl.h"
#include "platform/qt/SimulatedInstrument.h"
#include "screens/controls/EventGuard.h"
#include "screens/controls/FormTimer.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmPortSettings;
}
class frmSimulated;

/// The port screen: choice and test of the port. It owns the serial control and the timers that
/// the link runs on, and the simulated instrument where one is used, so it lives, mostly hidden, as
/// long as the program.
class frmPortSettings : public QDialog {
    Q_OBJECT

public:
    /// Attaches its controls to the link; its destruction closes the port and detaches them.
    explicit frmPortSettings(QWidget* parent = nullptr);
    ~frmPortSettings() override;

protected:
    /// Scans the ports and shows the choice in force.
    void showEvent(QShowEvent* event) override;

    /// Ends a search that is under way.
    void hideEvent(QHideEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void AttachControls();
    void ConnectSignals();
    void cmdOK_Click();
    void cmdScan_Click();
    void cboPort_Click();
    void cmdFind_Click();
    void cmdSimulated_Click();
    void StartSimulated();
    void simulated_Ready();
    void simulated_Ended(const QString& reason);
    void ShowSimulated();
    void IntervalChanged();
    void tmrTransferInterval_Timer();
    void ShowSearching(bool searching);

    void SetStatusText(const std::string& text);
    void SetPortList(const std::vector<std::string>& ports);
    void ShowProblems();
    void GrowToContents();

    std::unique_ptr<Ui::frmPortSettings> ui_;
    std::shared_ptr<platform::SerialControl> MSComm1;
    QTimer tmrTimeout{this};
    QTimer tmrTransferInterval{this};
    QTimer tmrProbe{this};
    FormTimer timeout_{tmrTimeout};
    FormTimer transferInterval_{tmrTransferInterval};
    FormTimer probe_{tmrProbe};
    platform::SimulatedInstrument simulated_;
    std::unique_ptr<frmSimulated> simulatedWindow_; ///< while the simulated instrument runs
    int simulatedPort_ = 0;
    bool searching_ = false; ///< the link tries the ports for an instrument
    EventGuard guard_{"Unexpected Error - "};
};
