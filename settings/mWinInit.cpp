#include "settings/mWinInit.h"

namespace mWinInit {

ProjectInfoRecord ProjectInfo;
HardwareSettingsRecord HardwareSettings;
std::array<ChannelSetupRecord, maxChannels> ChannelSetup;
std::array<CalibrationRecord, maxChannels> Calibration;
std::array<TempSensorCalibration, tempSensorCount> TempSensor;
std::int16_t WindowX = 0;
std::int16_t WindowY = 0;

Measure::InputTables ConversionTables() {
    std::array<std::string_view, maxChannels> electrodes;
    for (std::size_t i = 0; i < electrodes.size(); ++i)
        electrodes[i] = ChannelSetup[i].Electrode;
    return {electrodes, Calibration, TempSensor};
}

void Reset(std::int16_t channelCount) {
    ProjectInfo = {};
    HardwareSettings = {};
    HardwareSettings.ChannelCount = channelCount;
    ChannelSetup = {};
    Calibration = {};
    TempSensor = {};
    WindowX = 0;
    WindowY = 0;
}

} // namespace mWinInit
