#include "screens/calib/CalibTest.h"

#include "link/CommPort.h"
#include "settings/mWinInit.h"

#include <cmath>

CalibTest::CalibTest() {
    mWinInit::HardwareSettings.AveragingForCalibration = 1;
    mWinInit::ChannelSetup[pHChannel].Electrode = "H (pH)";
    for (const std::size_t channel : {firstCa, secondCa}) {
        auto& setup = mWinInit::ChannelSetup[channel];
        setup.Electrode = "Ca";
        setup.MolarMass = 40.078F;
    }
    mWinInit::ChannelSetup[clChannel].Electrode = "Cl";
    CommPort::fncInitializeComPort();
}

CalibrationRecord& CalibTest::Stored(std::size_t channel) {
    return mWinInit::Calibration.at(channel);
}

void CalibTest::ReadingArrives(const QWidget& form, double potential_mV) {
    const int tenths = static_cast<int>(std::lround(potential_mV * 10));
    Arrive({tenths, 250, tenths, 250, tenths, 250, tenths, 250});
    Tick(form, "tmrRead");
}

std::string CalibTest::LibraryLine(std::size_t channel) const {
    const auto& electrode = mWinInit::ChannelSetup.at(channel).Electrode;
    return platform.profile->GetString("All Calibration Info",
                                       "Chan" + std::to_string(channel + 1) + "_Cali_" + electrode,
                                       "", 1000);
}

std::string CalibTest::TextOf(const QWidget& form, const QString& name) {
    if (const auto* box = form.findChild<QLineEdit*>(name))
        return box->text().toStdString();
    if (const auto* button = form.findChild<QAbstractButton*>(name))
        return button->text().toStdString();
    return Find<QLabel>(form, name).text().toStdString();
}

std::string CalibTest::Caption(const QWidget& form, int button) {
    return TextOf(form, "cmdSys_" + QString::number(button));
}

QString CalibTest::FocusName(const QWidget& form) {
    return form.focusWidget() != nullptr ? form.focusWidget()->objectName() : QString();
}

bool CalibTest::Hourglass() const {
    return platform.desktop.pointer == platform::MousePointer::hourglass;
}
