#include "screens/frmCheck/frmCheck.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "history/Notes.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/Colours.h"
#include "screens/controls/Wiring.h"
#include "settings/CheckChoices.h"
#include "settings/mWinInit.h"
#include "ui_frmCheck.h"

namespace {

constexpr int interval_ms = 500;
constexpr std::string_view notANumber = "Input not correct.";
constexpr std::string_view notSteady =
    "The reading is not steady yet. Please wait until the channel says \"steady\".";
constexpr std::string_view noReading = "The channel gives no reading at this time.";

std::string ValueText(const frmCheck::Reading& reading) {
    if (!reading.value)
        return "no reading";
    const auto& row = Quantities::Of(reading.quantity);
    const std::string number = reading.quantity == Quantity::pH
                                   ? NumberText::Format(*reading.value, row.pattern)
                                   : Mcommon::FormatReading(*reading.value);
    return number + " " + std::string(row.label);
}

History::Entry EntryOf(int channel, const std::string& text) {
    const auto& setup = mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel));
    History::Entry entry;
    entry.kind = History::Kind::checked;
    entry.channel = channel;
    entry.electrode = setup.Electrode;
    entry.serialNo = setup.SerialNo;
    entry.text = text;
    return entry;
}

} // namespace

frmCheck::frmCheck(const std::vector<int>& channels, Read read, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCheck>()), read_(std::move(read)) {
    ui_->setupUi(this);
    for (const int channel : channels) {
        const auto& setup = mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel));
        ui_->cboChannel->addItem(
            QString("%1: %2").arg(channel + 1).arg(Text::ToQt(setup.Electrode)), channel);
    }
    const auto bounds = mWinInit::LoadCheckBounds();
    ui_->txtLowest->setText(Text::ToQt(NumberText::Plain(bounds.lowest_percent)));
    ui_->txtHighest->setText(Text::ToQt(NumberText::Plain(bounds.highest_percent)));
    for (QLineEdit* box : {ui_->txtStandard, ui_->txtLowest, ui_->txtHighest})
        AcceptCodePageOnly(*box);
    tmrCheck_.setObjectName("tmrCheck");
    tmrCheck_.start(interval_ms);
    ShowReading();
    const Wiring wire(*this, guard_, "frmCheck");
    wire(&tmrCheck_, &QTimer::timeout, "tmrCheck", &frmCheck::tmrCheck_Timer);
    wire(ui_->cboChannel, &QComboBox::currentIndexChanged, "cboChannel",
         &frmCheck::cboChannel_Click);
    wire(ui_->cmdTake, &QPushButton::clicked, "cmdTake", &frmCheck::cmdTake_Click);
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtStandard->setFocus();
}

frmCheck::~frmCheck() = default;

int frmCheck::Channel() const {
    return ui_->cboChannel->currentData().toInt();
}

void frmCheck::tmrCheck_Timer() {
    ShowReading();
}

void frmCheck::cboChannel_Click() {
    ui_->lblOutcome->clear();
    ShowReading();
}

void frmCheck::ShowReading() {
    const Reading reading = read_(Channel());
    ui_->lblReading->setText(Text::ToQt(ValueText(reading) + (reading.steady ? ", steady" : "")));
    ui_->lblUnit->setText(Text::ToQt(std::string(Quantities::Label(reading.quantity))));
}

std::optional<CheckStandard::Bounds> frmCheck::BoundsNow() const {
    const auto lowest = NumberText::StrictSingle(Text::FromQt(ui_->txtLowest->text()));
    const auto highest = NumberText::StrictSingle(Text::FromQt(ui_->txtHighest->text()));
    if (!lowest || !highest || *lowest > *highest)
        return std::nullopt;
    return CheckStandard::Bounds{*lowest, *highest};
}

void frmCheck::cmdTake_Click() {
    const auto standard = NumberText::StrictSingle(Text::FromQt(ui_->txtStandard->text()));
    const auto bounds = BoundsNow();
    const Reading reading = read_(Channel());
    if (!standard || *standard == 0 || !bounds)
        Mcommon::Inform(notANumber);
    else if (!reading.value)
        Mcommon::Inform(noReading);
    else if (!reading.steady)
        Mcommon::Inform(notSteady);
    else
        Take(reading, *standard, *bounds);
}

void frmCheck::Take(const Reading& reading, float standard, const CheckStandard::Bounds& bounds) {
    const auto outcome = CheckStandard::Check(*reading.value, standard, bounds);
    if (!outcome)
        return;
    const std::string text = CheckStandard::Text(*outcome, bounds);
    ui_->lblOutcome->setText(Text::ToQt(text));
    Colours::MarkError(*ui_->lblOutcome, !outcome->passes);
    History::Note(EntryOf(Channel(),
                          ValueText(reading) + " of " + NumberText::Plain(standard) + ". " + text));
    for (const std::string& message : mWinInit::SaveCheckBounds(bounds))
        Mcommon::Warn(message);
}
