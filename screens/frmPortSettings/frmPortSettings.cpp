#include "screens/frmPortSettings/frmPortSettings.h"

#include "app/Mcommon.h"
#include "base/PortName.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "platform/qt/PortInfo.h"
#include "platform/qt/SystemSerialControl.h"
#include "platform/qt/Text.h"
#include "screens/controls/ListLabels.h"
#include "screens/controls/Placement.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "screens/frmPortSettings/PortDevice.h"
#include "screens/frmSimulated/frmSimulated.h"
#include "ui_frmPortSettings.h"

#include <QLayout>
#include <QShowEvent>
#include <QStringList>

#include <algorithm>

namespace {

/// Beside its text "COM5" an entry of cboPort carries its number.
int ChosenPort(const QComboBox& box) {
    return box.currentIndex() < 0 ? CommPort::PortNumber() : box.currentData().toInt();
}

int NumberOfPort(const QString& name) {
    return PortName::NumberOf(Text::FromQt(name));
}

} // namespace

frmPortSettings::frmPortSettings(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmPortSettings>()) {
    ui_->setupUi(this);
    LabelLists(*this);
    MSComm1 = platform::MakeSerialControl(*this, [this](const std::function<void()>& handler) {
        guard_("frmPortSettings - MSComm1", handler);
    });
    tmrTimeout.setObjectName("tmrTimeout");
    tmrTransferInterval.setObjectName("tmrTransferInterval");
    tmrProbe.setObjectName("tmrProbe");
    for (QTimer* timer : {&tmrTimeout, &tmrTransferInterval, &tmrProbe})
        timer->setTimerType(Qt::PreciseTimer);
    Form_Load();
    AttachControls();
    ConnectSignals();
}

frmPortSettings::~frmPortSettings() {
    CommPort::Detach();
}

void frmPortSettings::Form_Load() {
    for (const auto rate : offeredBitRates) {
        const auto text = Text::ToQt(rate);
        ui_->cboBitRate->addItem(text, text.toInt());
    }
    ui_->cboBitRate->setCurrentIndex(-1);
    ui_->cboPort->setCurrentIndex(-1);
}

void frmPortSettings::AttachControls() {
    CommPort::Controls controls;
    controls.MSComm1 = MSComm1.get();
    controls.tmrTimeout = &timeout_;
    controls.tmrTransferInterval = &transferInterval_;
    controls.SetStatusText = [this](const std::string& text) { SetStatusText(text); };
    controls.tmrProbe = &probe_;
    controls.SetAnswerText = [this](const std::string& text) {
        ShowValue(*ui_->lblAnswer, Text::ToQt(text));
    };
    controls.SetSearching = [this](bool searching) { ShowSearching(searching); };
    controls.SetPortList = [this](const auto& ports) { SetPortList(ports); };
    controls.SelectPort = [this](int entry) { ui_->cboPort->setCurrentIndex(entry); };
    controls.SelectBitRate = [this](int entry) { ui_->cboBitRate->setCurrentIndex(entry); };
    controls.IntervalValue = [this] { return ui_->txtInterval->value(); };
    controls.IntervalUnit = [this] { return Text::FromQt(ui_->cboIntervalUnit->currentText()); };
    CommPort::Attach(std::move(controls));
}

void frmPortSettings::ConnectSignals() {
    const Wiring wire(*this, guard_, "frmPortSettings");
    wire(ui_->cmdOK, &QPushButton::clicked, "cmdOK", &frmPortSettings::cmdOK_Click);
    wire(ui_->cmdScan, &QPushButton::clicked, "cmdScan", &frmPortSettings::cmdScan_Click);
    wire(ui_->cmdFind, &QPushButton::clicked, "cmdFind", &frmPortSettings::cmdFind_Click);
    wire(ui_->cmdSimulated, &QPushButton::clicked, "cmdSimulated",
         &frmPortSettings::cmdSimulated_Click);
    wire(&simulated_, &platform::SimulatedInstrument::Ready, "simulated",
         &frmPortSettings::simulated_Ready);
    wire(&simulated_, &platform::SimulatedInstrument::Ended, "simulated",
         &frmPortSettings::simulated_Ended);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    // The device's line follows the selection, whoever made it.
    wire(ui_->cboPort, &QComboBox::currentIndexChanged, "cboPort", &frmPortSettings::cboPort_Click);
    wire(ui_->txtInterval, &QSpinBox::valueChanged, "txtInterval",
         &frmPortSettings::IntervalChanged);
    wire(ui_->cboIntervalUnit, &QComboBox::currentIndexChanged, "cboIntervalUnit",
         &frmPortSettings::IntervalChanged);
    // One pass of the event loop later, so that bytes which the system holds already are counted.
    const auto later = [this](QTimer& timer, const char* location, void (*handler)()) {
        connect(
            &timer, &QTimer::timeout, this,
            [this, location, handler] { guard_(location, handler); }, Qt::QueuedConnection);
    };
    later(tmrTimeout, "frmPortSettings - tmrTimeout", CommPort::tmrTimeout_Timer);
    later(tmrProbe, "frmPortSettings - tmrProbe", CommPort::tmrProbe_Timer);
    wire(&tmrTransferInterval, &QTimer::timeout, "tmrTransferInterval",
         &frmPortSettings::tmrTransferInterval_Timer);
}

void frmPortSettings::tmrTransferInterval_Timer() {
    CommPort::tmrTransferInterval_Timer();
}

void frmPortSettings::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous())
        guard_("frmPortSettings - Form_Activate", [this] { Form_Activate(); });
}

void frmPortSettings::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        guard_("frmPortSettings - Form_Deactivate", CommPort::StopSearch);
}

void frmPortSettings::Form_Activate() {
    CommPort::ScanPorts();
    CommPort::ShowPresentStatus();
    CommPort::SetBitRateComboBox();
    CommPort::SetPortComboBox();
    ShowProblems();
    cboPort_Click();
    ui_->cboPort->setFocus();
}

void frmPortSettings::cmdOK_Click() {
    const auto bitRate = ui_->cboBitRate->currentIndex() < 0
                             ? CommPort::BitRate()
                             : static_cast<std::int32_t>(ui_->cboBitRate->currentData().toInt());
    CommPort::TestPort(bitRate, static_cast<std::int16_t>(ChosenPort(*ui_->cboPort)));
}

void frmPortSettings::cmdScan_Click() {
    const auto chosen = ui_->cboPort->currentText();
    CommPort::ScanPorts();
    ui_->cboPort->setCurrentIndex(ui_->cboPort->findText(chosen));
    ShowProblems();
    cboPort_Click();
}

void frmPortSettings::cmdFind_Click() {
    if (searching_)
        CommPort::StopSearch();
    else
        CommPort::FindInstrument();
}

/// While the ports are tried, nothing else is done with them.
void frmPortSettings::ShowSearching(bool searching) {
    searching_ = searching;
    ui_->cmdFind->setText(searching ? "Stop Searc&hing" : "&Find Instrument");
    for (QWidget* widget : std::initializer_list<QWidget*>{ui_->fraPort, ui_->fraBitRate,
                                                           ui_->cmdOK, ui_->cmdSimulated})
        widget->setEnabled(!searching);
}

void frmPortSettings::cmdSimulated_Click() {
    if (!simulated_.IsRunning())
        StartSimulated();
    else if (simulatedWindow_) {
        simulatedWindow_->show();
        simulatedWindow_->activateWindow();
    }
}

void frmPortSettings::StartSimulated() {
    const auto port = PortDevice::FreeNumber();
    if (!port) {
        Mcommon::Warn("No port number is left for the simulated instrument: behind each of COM1 "
                      "to COM16 stands a device or a link.");
        return;
    }
    if (platform::SimulatedInstrument::ProgramFile().isEmpty()) {
        Mcommon::Warn("The program vantrel-instrument was not found, neither beside this program "
                      "nor in the search path. On Linux it is installed with this program.");
        return;
    }
    simulatedPort_ = *port;
    simulatedWindow_ = std::make_unique<frmSimulated>(simulated_, *port, this);
    simulated_.Start(PortDevice::LinkOf(*port), simulatedWindow_->CommandsAtStart());
    ShowSimulated();
    SetStatusText("The simulated instrument is starting...");
}

void frmPortSettings::simulated_Ready() {
    ShowSimulated();
    CommPort::UseSimulated(static_cast<std::int16_t>(simulatedPort_));
    ShowProblems();
    cboPort_Click();
}

void frmPortSettings::simulated_Ended(const QString& reason) {
    if (simulatedWindow_) // it may be at work: it asks for the end itself
        simulatedWindow_.release()->deleteLater();
    ShowSimulated();
    CommPort::SimulatedEnded();
    CommPort::ScanPorts();
    CommPort::SetPortComboBox();
    cboPort_Click();
    SetStatusText("The simulated instrument has ended.");
    if (!reason.isEmpty())
        Mcommon::Warn("The simulated instrument has ended: " + Text::ForMessage(reason));
}

/// One button starts it and opens its window then.
void frmPortSettings::ShowSimulated() {
    ui_->cmdSimulated->setText(simulated_.IsReady() ? "Sim&ulated Instrument..."
                                                    : "&Use the Simulated Instrument");
    ui_->cmdSimulated->setEnabled(!searching_ && (simulated_.IsReady() || !simulated_.IsRunning()));
}

void frmPortSettings::cboPort_Click() {
    const auto port = ChosenPort(*ui_->cboPort);
    auto device = platform::InfoOfPort(port).description;
    if (simulated_.IsReady() && port == simulatedPort_)
        device += " - simulated instrument";
    ShowValue(*ui_->lblDevice,
              device.isEmpty() ? QString() : Text::ToQt(PortName::Of(port)) + ": " + device);
}

void frmPortSettings::IntervalChanged() {
    CommPort::ApplyTransferInterval();
}

void frmPortSettings::SetStatusText(const std::string& text) {
    ui_->txtStatus->setText(Text::ToQt(text));
    ui_->txtStatus->setToolTip(ui_->txtStatus->text());
    ui_->txtStatus->setCursorPosition(0);
}

void frmPortSettings::SetPortList(const std::vector<std::string>& ports) {
    QComboBox& box = *ui_->cboPort;
    box.clear();
    for (const auto& port : ports) {
        const auto name = Text::ToQt(port);
        box.addItem(name, NumberOfPort(name));
        box.setItemData(box.count() - 1, platform::InfoOfPort(NumberOfPort(name)).description,
                        Qt::ToolTipRole);
    }
    box.setCurrentIndex(-1); // the stored port is selected only where the scan found it
}

void frmPortSettings::ShowProblems() {
    QStringList problems;
    for (int port = 1; port <= maxPortNumber; ++port) {
        const auto& problem = CommPort::PortProblem(port);
        // Ports without a device are the rule and no news.
        if (!problem.empty() && platform::InfoOfPort(port).isThere)
            problems << Text::ToQt(problem);
    }
    ShowValue(*ui_->lblProblems, problems.join('\n'));
    ui_->lblProblems->setVisible(!problems.isEmpty());
    GrowToContents();
}

/// A text of several lines may have appeared in a window that is already shown.
void frmPortSettings::GrowToContents() {
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
    Mcommon::FitOntoScreen(*this);
}
