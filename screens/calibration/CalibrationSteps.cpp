#include "screens/calibration/CalibrationSteps.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"
#include "screens/calibration/CalibrationTexts.h"
#include "settings/mWinInit.h"

#include <QPushButton>

void ShowCalibrationHelp() {
    const platform::Services& services = platform::Current();
    services.desktop.ShowHelpText(services.places.ProgramFolder() / CalibrationTexts::helpFile);
}

void OfferFinish(bool finish, QPushButton& finishButton, QPushButton& closeButton) {
    (finish ? closeButton : finishButton).hide();
    (finish ? finishButton : closeButton).show();
}

void StoreCalibration(int channel, CalibrationRecord record, const std::string& date) {
    const auto position = static_cast<std::size_t>(channel);
    record.CalibrationDate = date;
    mWinInit::Calibration.at(position) = record;
    const auto losses = mWinInit::SaveCalibrationInfo(mWinInit::ChannelSetup.at(position).Electrode,
                                                      static_cast<std::int16_t>(channel));
    for (const std::string& loss : losses)
        Mcommon::Warn(loss);
}
