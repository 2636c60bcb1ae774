#include "history/Settings.h"

#include "base/NumberText.h"
#include "base/PortName.h"
#include "link/CommPort.h"
#include "settings/CalibrationAge.h"
#include "settings/StoredLimits.h"
#include "settings/mWinInit.h"

namespace History {

namespace {

std::string Number(int number) {
    return NumberText::Plain(std::int32_t{number});
}

void AddChannel(Settings& settings, std::size_t index, const Limits& limits) {
    const mWinInit::ChannelSetupRecord& setup = mWinInit::ChannelSetup[index];
    const int channel = static_cast<int>(index);
    settings.push_back({"electrode", channel, setup.Electrode});
    settings.push_back({"serial number", channel, setup.SerialNo});
    settings.push_back({"reference type", channel, setup.RefType});
    settings.push_back({"reference serial number", channel, setup.RefSerialNo});
    settings.push_back({"molar mass", channel, NumberText::Plain(setup.MolarMass)});
    settings.push_back({"temperature sensor", channel, Number(setup.TempSensor)});
    settings.push_back({"limits", channel, LimitsText(limits)});
}

} // namespace

Settings SettingsInForce() {
    const auto& project = mWinInit::ProjectInfo;
    const auto& hardware = mWinInit::HardwareSettings;
    Settings settings = {
        {"Project name", std::nullopt, project.ProjectName},
        {"Experiment date", std::nullopt, project.ExperimentDate},
        {"Analyst", std::nullopt, project.Experimentator},
        {"Data folder", std::nullopt, project.MeasurementFileLocation},
        {"Hardware port number", std::nullopt, Number(hardware.HardwarePortNumber)},
        {"Averaging for calibration", std::nullopt, Number(hardware.AveragingForCalibration)},
        {"Averaging for measurement", std::nullopt, Number(hardware.AveragingForMeasurement)},
        {"Port", std::nullopt, PortName::Of(CommPort::PortNumber())},
        {"Bit rate", std::nullopt, NumberText::Plain(CommPort::BitRate())}};
    const mWinInit::CalibrationAges ages = mWinInit::LoadCalibrationAges();
    settings.push_back({"Hours until a pH calibration is marked", {}, Number(ages.pH_hours)});
    settings.push_back({"Hours until an ion calibration is marked", {}, Number(ages.ion_hours)});
    settings.push_back({"Hours until a Redox calibration is marked", {}, Number(ages.redox_hours)});
    const ChannelLimits limits = mWinInit::LoadLimits();
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        AddChannel(settings, i, limits[i]);
    return settings;
}

} // namespace History
