#include "screens/frmLimits/frmLimits.h"

#include "app/Mcommon.h"
#include "history/Notes.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/Wiring.h"
#include "settings/StoredLimits.h"
#include "settings/mWinInit.h"
#include "ui_frmLimits.h"

namespace {

/// True when the channel shows values of the quantity.
bool Shows(std::size_t channel, Quantity quantity) {
    const auto& setup = mWinInit::ChannelSetup[channel];
    if (Quantities::IsOfSensors(quantity))
        return setup.TempSensor > 0;
    return Quantities::Gives(Electrode::KindOf(setup.Electrode), quantity);
}

QString EndText(const std::optional<float>& end) {
    return end ? Text::ToQt(NumberText::Plain(*end)) : QString();
}

} // namespace

frmLimits::frmLimits(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmLimits>()), limits_(mWinInit::LoadLimits()) {
    ui_->setupUi(this);
    lblLimit = ControlArray<QLabel>(*this, "lblLimit");
    txtLow = ControlArray<QLineEdit>(*this, "txtLow");
    txtHigh = ControlArray<QLineEdit>(*this, "txtHigh");
    cboLimit = ControlArray<QComboBox>(*this, "cboLimit");
    cmdBtn = ControlArray<QPushButton>(*this, "cmdBtn");
    for (std::size_t channel = 0; channel < maxChannels; ++channel)
        ShowChannel(channel);
    const Wiring wire(*this, guard_, "frmLimits");
    wire(cmdBtn, &QPushButton::clicked, "cmdBtn", &frmLimits::cmdBtn_Click);
}

frmLimits::~frmLimits() = default;

void frmLimits::ShowChannel(std::size_t channel) {
    const Limits& limits = limits_[channel];
    const bool used = channel < mWinInit::ChannelsInUse();
    for (QWidget* control : std::initializer_list<QWidget*>{&lblLimit(channel), &txtLow(channel),
                                                            &txtHigh(channel), &cboLimit(channel)})
        control->setVisible(used);
    AcceptCodePageOnly(txtLow(channel));
    AcceptCodePageOnly(txtHigh(channel));
    txtLow(channel).setText(EndText(limits.low));
    txtHigh(channel).setText(EndText(limits.high));
    QComboBox& units = cboLimit(channel);
    for (const auto& row : Quantities::table)
        if (Shows(channel, row.quantity) || (limits.AreSet() && limits.quantity == row.quantity))
            units.addItem(Text::ToQt(std::string(row.label)), static_cast<int>(row.quantity));
    units.setCurrentIndex(std::max(units.findData(static_cast<int>(limits.quantity)), 0));
}

void frmLimits::cmdBtn_Click(std::size_t Index) {
    if (Index == Button::cancel)
        return reject();
    AcceptLimits();
}

void frmLimits::AcceptLimits() {
    ChannelLimits entered = limits_;
    for (std::size_t channel = 0; channel < mWinInit::ChannelsInUse(); ++channel) {
        const auto limits = LimitsOf(channel);
        if (!limits)
            return;
        entered[channel] = *limits;
    }
    const auto messages = mWinInit::SaveLimits(entered);
    History::NoteSettings();
    for (const std::string& message : messages)
        Mcommon::Warn(message);
    limits_ = entered;
    accept();
}

/// Nothing, after a message, where a box holds no limit.
std::optional<Limits> frmLimits::LimitsOf(std::size_t channel) {
    Limits limits;
    if (!ReadEnd(txtLow(channel), channel, limits.low) ||
        !ReadEnd(txtHigh(channel), channel, limits.high))
        return std::nullopt;
    if (limits.low && limits.high && *limits.low > *limits.high) {
        Refuse(txtLow(channel), channel, "the low limit is above the high one.");
        return std::nullopt;
    }
    if (limits.AreSet())
        limits.quantity = static_cast<Quantity>(cboLimit(channel).currentData().toInt());
    return limits;
}

bool frmLimits::ReadEnd(QLineEdit& box, std::size_t channel, std::optional<float>& end) {
    const std::string text = Mcommon::TrimControl(Text::FromQt(box.text()));
    if (text.empty())
        return true;
    end = NumberText::StrictSingle(text);
    if (!end)
        Refuse(box, channel, "\"" + text + "\" is no number.");
    return end.has_value();
}

void frmLimits::Refuse(QLineEdit& box, std::size_t channel, const std::string& reason) {
    Mcommon::Inform("Channel " + std::to_string(channel + 1) + ": " + reason);
    box.setFocus(Qt::OtherFocusReason);
    box.selectAll();
}
