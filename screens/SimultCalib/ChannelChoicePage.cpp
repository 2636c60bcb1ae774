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
    chkSimult.Connect(*this, &QCheckBox::toggled, [this](int Index) { Q_EMIT Toggled(Index); });
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
        box->setVisible(channel < mWinInit::HardwareSettings.ChannelCount);
        box->setEnabled(CanBeCalibrated(electrode));
    }
}

std::vector<int> ChannelChoicePage::Ticked() const {
    std::vector<int> ticked;
    for (const auto& [channel, box] : chkSimult)
        if (channel < mWinInit::HardwareSettings.ChannelCount && box->isEnabled() &&
            box->isChecked())
            ticked.push_back(channel);
    return ticked;
}

bool ChannelChoicePage::DiffersFromOthers(int channel) const {
    const std::string& electrode = SetupOf(channel).Electrode;
    return std::ranges::any_of(Ticked(),
                               [&](int other) { return SetupOf(other).Electrode != electrode; });
}

void ChannelChoicePage::Untick(int channel) {
    const QSignalBlocker quiet(chkSimult(channel));
    chkSimult(channel).setChecked(false);
}
