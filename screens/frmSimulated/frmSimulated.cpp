#include "screens/frmSimulated/frmSimulated.h"

#include "base/Electrode.h"
#include "base/PortName.h"
#include "platform/qt/Text.h"
#include "screens/controls/Wiring.h"
#include "settings/mWinInit.h"
#include "ui_frmSimulated.h"

#include <algorithm>
#include <array>

namespace {

constexpr int channels = 4; ///< of the simulated instrument

struct FaultEntry {
    const char* name; ///< of the simulator
    const char* text;
    const char* seconds; ///< proposed; null where it takes none
};

constexpr std::array<FaultEntry, 10> faults = {{
    {"none", "answers well", nullptr},
    {"silence", "no answer", nullptr},
    {"half", "half an answer", nullptr},
    {"badend", "a bad last byte", nullptr},
    {"garbage", "48 bytes without sense", nullptr},
    {"noise", "noise before the answer", nullptr},
    {"extra", "bytes too many", nullptr},
    {"pieces", "in four pieces, each later by", "0.2"},
    {"delay", "the answer is late by", "1"},
    {"unplug", "the cable comes off within an answer", nullptr},
}};

QString SetupElectrode(std::size_t channel) {
    return Text::ToQt(mWinInit::ChannelSetup.at(channel).Electrode);
}

} // namespace

frmSimulated::frmSimulated(platform::SimulatedInstrument& instrument, int port, QWidget* parent)
    : QDialog(parent), instrument_(instrument), ui_(std::make_unique<Ui::frmSimulated>()) {
    ui_->setupUi(this);
    setWindowTitle("Simulated Instrument on " + Text::ToQt(PortName::Of(port)));
    cboElectrode = ControlArray<QComboBox>(*this, "cboElectrode");
    cboContent = ControlArray<QComboBox>(*this, "cboContent");
    txtAmount = ControlArray<QLineEdit>(*this, "txtAmount");
    cboUnit = ControlArray<QComboBox>(*this, "cboUnit");
    txtTemperature = ControlArray<QLineEdit>(*this, "txtTemperature");
    cmdBtn = ControlArray<QPushButton>(*this, "cmdBtn");
    for (std::size_t channel = 0; channel < channels; ++channel)
        ShowChannel(channel, Simulated::AtStart(channel, SetupElectrode(channel)));
    for (const FaultEntry& fault : faults)
        ui_->cboFault->addItem(fault.text, fault.name);
    cboFault_Click();
    const Wiring wire(*this, guard_, "frmSimulated");
    wire(cboElectrode, &QComboBox::currentIndexChanged, "cboElectrode",
         &frmSimulated::cboElectrode_Click);
    wire(cboContent, &QComboBox::currentIndexChanged, "cboContent", &frmSimulated::ShowUnits);
    wire(ui_->cboFault, &QComboBox::currentIndexChanged, "cboFault", &frmSimulated::cboFault_Click);
    wire(cmdBtn, &QPushButton::clicked, "cmdBtn", &frmSimulated::cmdBtn_Click);
    wire(&instrument_, &platform::SimulatedInstrument::Answered, "instrument",
         &frmSimulated::instrument_Answered);
}

frmSimulated::~frmSimulated() = default;

QStringList frmSimulated::CommandsAtStart() {
    QStringList commands;
    for (std::size_t channel = 0; channel < channels; ++channel)
        commands << Simulated::CommandsFor(channel, ChannelOf(channel));
    for (const QString& command : commands)
        inForce_[Simulated::SubjectOf(command)] = command;
    return commands;
}

void frmSimulated::ShowChannel(std::size_t channel, const SimulatedChannel& shown) {
    for (const Electrode::Type& type : Electrode::types) {
        const QString name = Text::ToQt(type.name);
        cboElectrode(channel).addItem(name);
        if (type.name != Electrode::noneName)
            cboContent(channel).addItem(name);
    }
    cboContent(channel).addItem(Simulated::water);
    cboElectrode(channel).setCurrentText(shown.electrode);
    cboContent(channel).setCurrentText(shown.content);
    ShowUnits(channel);
    txtAmount(channel).setText(shown.amount);
    cboUnit(channel).setCurrentText(shown.unit);
    txtTemperature(channel).setText(shown.temperature_C);
}

/// The unit of an ion can be chosen; that of the others follows.
void frmSimulated::ShowUnits(std::size_t channel) {
    const QString content = cboContent(channel).currentText();
    const QStringList units = Simulated::UnitsOf(content);
    const bool chosen = cboUnit(channel).isEnabled() && !units.isEmpty();
    const QString former = chosen ? cboUnit(channel).currentText() : QString();
    cboUnit(channel).clear();
    cboUnit(channel).addItems(units);
    if (units.isEmpty() && content == Text::ToQt(Electrode::redoxName))
        cboUnit(channel).addItem("mV");
    cboUnit(channel).setCurrentIndex(std::max(0, cboUnit(channel).findText(former)));
    cboUnit(channel).setEnabled(!units.isEmpty());
    txtAmount(channel).setEnabled(content != Simulated::water);
}

/// An electrode is put into a solution that it responds to; another can be chosen then.
void frmSimulated::cboElectrode_Click(std::size_t Index) {
    SimulatedChannel shown = ChannelOf(Index);
    Simulated::Dip(shown);
    cboContent(Index).setCurrentText(shown.content);
    txtAmount(Index).setText(shown.amount);
    cboUnit(Index).setCurrentText(shown.unit);
}

void frmSimulated::cboFault_Click() {
    const auto at = static_cast<std::size_t>(std::max(0, ui_->cboFault->currentIndex()));
    const char* const seconds = faults.at(at).seconds;
    ui_->txtSeconds->setEnabled(seconds != nullptr);
    ui_->txtSeconds->setText(seconds);
}

SimulatedChannel frmSimulated::ChannelOf(std::size_t channel) const {
    return {cboElectrode(channel).currentText(), cboContent(channel).currentText(),
            txtAmount(channel).text(), cboUnit(channel).currentText(),
            txtTemperature(channel).text()};
}

void frmSimulated::cmdBtn_Click(std::size_t Index) {
    switch (Index) {
    case Button::apply:
        return Apply();
    case Button::setFault:
        return SetFault();
    case Button::pullCable:
        return Send("unplug");
    case Button::putCableBack:
        return Send("replug");
    case Button::endInstrument:
        return instrument_.Stop();
    default:
        return reject();
    }
}

/// Only what has changed is sent: an electrode that is put in anew has to settle anew.
void frmSimulated::Apply() {
    ui_->txtAnswer->clear();
    for (std::size_t channel = 0; channel < channels; ++channel)
        for (const QString& command : Simulated::CommandsFor(channel, ChannelOf(channel)))
            if (inForce_.value(Simulated::SubjectOf(command)) != command)
                instrument_.Send(command);
}

void frmSimulated::SetFault() {
    QString command = "fault " + ui_->cboFault->currentData().toString();
    if (ui_->txtSeconds->isEnabled())
        command += " " + ui_->txtSeconds->text().simplified();
    if (ui_->txtTimes->value() > 0 && ui_->cboFault->currentIndex() > 0)
        command += " times " + QString::number(ui_->txtTimes->value());
    Send(command);
}

void frmSimulated::Send(const QString& command) {
    ui_->txtAnswer->clear();
    instrument_.Send(command);
}

void frmSimulated::instrument_Answered(const QString& command, bool ok, const QString& text) {
    if (ok)
        inForce_[Simulated::SubjectOf(command)] = command;
    ui_->txtAnswer->appendPlainText(ok ? text : "Refused: " + text);
}
