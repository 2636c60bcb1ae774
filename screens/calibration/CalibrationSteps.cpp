#include "screens/calibration/CalibrationSteps.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "history/Notes.h"
#include "platform/Platform.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/ChannelRecords.h"
#include "settings/SetupChecks.h"
#include "settings/mWinInit.h"

#include <QPushButton>

namespace {

constexpr const char* averagingPrompt = "Input new averaging number for the calibration.";

} // namespace

void ShowCalibrationHelp() {
    const platform::Services& services = platform::Current();
    services.desktop.ShowHelpText(services.places.ProgramFolder() / CalibrationTexts::helpFile);
}

void OfferFinish(bool finish, QPushButton& finishButton, QPushButton& closeButton) {
    (finish ? closeButton : finishButton).hide();
    (finish ? finishButton : closeButton).show();
}

bool AskAveragingForCalibration() {
    std::int16_t& averaging = mWinInit::HardwareSettings.AveragingForCalibration;
    const std::string answer = platform::Current().dialogs.AskText(
        averagingPrompt, std::string(Mcommon::applicationTitle), NumberText::Plain(averaging));
    if (Mcommon::TrimControl(answer).empty())
        return false;
    const auto number = SetupChecks::Averaging(answer);
    if (!number) {
        Mcommon::Warn(SetupChecks::averagingRange);
        return false;
    }
    averaging = *number;
    History::NoteSettings();
    return true;
}

void StoreCalibration(std::size_t channel, CalibrationRecord record, const std::string& date,
                      const std::string& temperature_celsius) {
    record.CalibrationDate = date;
    StoredOf(channel) = record;
    History::NoteCalibration(channel, temperature_celsius);
    const auto losses = mWinInit::SaveCalibrationInfo(SetupOf(channel).Electrode, channel);
    for (const std::string& loss : losses)
        Mcommon::Warn(loss);
}
