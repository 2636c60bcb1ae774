#include "screens/SimultCalib/ChannelChoicePage.h"

#include "base/Electrode.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/ChannelRecords.h"
#include "settings/mWinInit.h"
#include "ui_ChannelChoicePage.h"

#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

bool CanBeCalibrated(const std::string& electrode) {
    return Electrode::KindOf(electrode) != Electrode::Kind::none &&
           electrode.find("mV") == std::string::npos;
}

} // namespace

ChannelChoicePage::ChannelChoicePage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ChannelChoicePage>()) {
    ui_->setupUi(this);
    chkSimult = ControlArray<QCheckBox>(*this, "chkSimult");
    chkSimult.Connect(*this, &QCheckBox::toggled,
                      [this](std::size_t Index) { Q_EMIT Toggled(Index); });
    ShowInstructions();
}

ChannelChoicePage::~ChannelChoicePage() = default;

void ChannelChoicePage::ShowInstructions() {
    ui_->RTXSimult->setPlainText(Text::ToQt(CalibrationTexts::Instructions()));
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (const std::string_view phrase : CalibrationTexts::boldPhrases)
        ui_->RTXSimult->document()->find(Text::ToQt(phrase)).mergeCharFormat(bold);
}

void ChannelChoicePage::ShowChannels() {
    for (const auto& [channel, box] : chkSimult) {
        const std::string& electrode = SetupOf(channel).Electrode;
        box->setText(Text::ToQt("Channel " + std::to_string(channel + 1) + ": " + electrode));
        box->setVisible(channel < mWinInit::ChannelsInUse());
        box->setEnabled(CanBeCalibrated(electrode));
    }
}

std::vector<std::size_t> ChannelChoicePage::Ticked() const {
    std::vector<std::size_t> ticked;
    for (const auto& [channel, box] : chkSimult)
        if (channel < mWinInit::ChannelsInUse() && box->isEnabled() && box->isChecked())
            ticked.push_back(channel);
    return ticked;
}

bool ChannelChoicePage::DiffersFromOthers(std::size_t channel) const {
    const std::string& electrode = SetupOf(channel).Electrode;
    return std::ranges::any_of(
        Ticked(), [&](std::size_t other) { return SetupOf(other).Electrode != electrode; });
}

void ChannelChoicePage::Untick(std::size_t channel) {
    const QSignalBlocker quiet(chkSimult(channel));
    chkSimult(channel).setChecked(false);
}
