#include "settings/mWinInit.h"

#include "base/CodePage.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "platform/Platform.h"
#include "settings/StoredLines.h"
#include "settings/TempSensorTable.h"

#include <algorithm>
#include <limits>

namespace mWinInit {

ProjectInfoRecord ProjectInfo;
HardwareSettingsRecord HardwareSettings;
std::array<ChannelSetupRecord, maxChannels> ChannelSetup;
std::array<CalibrationRecord, maxChannels> Calibration;
std::array<TempSensorCalibration, tempSensorCount> TempSensor;
std::int16_t WindowX = 0;
std::int16_t WindowY = 0;

namespace {

namespace section {
const std::string project = "Project Info";
const std::string hardware = "Hardware";
const std::string window = "Window Status";
const std::string electrodes = "Electrodes Info";
const std::string calibrations = "Calibration Info";
} // namespace section

namespace key {
const std::string projectName = "Project Name";
const std::string experimentDate = "Experiment Date";
const std::string experimentator = "Experimentator";
const std::string location = "Measurement File Location";
const std::string portNumber = "Port Number";
const std::string averagingForCalibration = "Averaging Number For Calibration";
const std::string averagingForMeasurement = "Averaging Number For Measurement";
const std::string x = "X";
const std::string y = "Y";
const std::array<std::string, maxChannels> channels = {
    "Channel One",  "Channel Two", "Channel Three", "Channel Four",
    "Channel Five", "Channel Six", "Channel Seven", "Channel Eight"};
} // namespace key

constexpr int defaultOfHardware = 2; ///< port number and both averaging numbers

/// For the texts whose empty value means the default, too.
std::string ReadFilled(const std::string& keyName, std::string_view fallback) {
    std::string text = ReadValue(section::project, keyName);
    return text.empty() ? std::string(fallback) : text;
}

std::int16_t ReadNumber(const std::string& sectionName, const std::string& keyName, int fallback) {
    using Limits = std::numeric_limits<std::int16_t>;
    const int number = platform::Current().profile.GetInt(sectionName, keyName, fallback);
    return static_cast<std::int16_t>(std::clamp<int>(number, Limits::min(), Limits::max()));
}

void LoadProject() {
    ProjectInfo.ProjectName = ReadFilled(key::projectName, projectPlaceholder);
    const std::string now = DateText::Record(platform::Current().clock.Now());
    ProjectInfo.ExperimentDate = ReadValue(section::project, key::experimentDate, now);
    ProjectInfo.Experimentator = ReadFilled(key::experimentator, analystPlaceholder);
    // A default folder whose name the code page lacks cannot be held as text; the location then
    // stays empty, which means that folder.
    const auto folder = CodePage::FromPath(DefaultDataFolder());
    ProjectInfo.MeasurementFileLocation = ReadFilled(key::location, folder.value_or(""));
}

void LoadChannel(std::size_t channel) {
    const std::string& keyName = key::channels[channel];
    DecodeChannel(ChannelSetup[channel], ReadChannelLine(section::electrodes, keyName));
    const auto kind = Electrode::KindOf(ChannelSetup[channel].Electrode);
    DecodeCalibration(
        Calibration[channel],
        ReadTableLine(section::calibrations, keyName, calibrationCountField, firstCalibrationPoint),
        kind == Electrode::Kind::pH);
}

} // namespace

std::filesystem::path DefaultDataFolder() {
    return platform::Current().places.DataParentFolder() / "Data";
}

void LoadSettings() {
    LoadProject();
    HardwareSettings.HardwarePortNumber =
        ReadNumber(section::hardware, key::portNumber, defaultOfHardware);
    HardwareSettings.AveragingForCalibration =
        ReadNumber(section::hardware, key::averagingForCalibration, defaultOfHardware);
    HardwareSettings.AveragingForMeasurement =
        ReadNumber(section::hardware, key::averagingForMeasurement, defaultOfHardware);
    WindowX = ReadNumber(section::window, key::x, 0);
    WindowY = ReadNumber(section::window, key::y, 0);
    for (std::size_t channel = 0; channel < ChannelsInUse(); ++channel)
        LoadChannel(channel);
    for (std::size_t sensor = 0; sensor < tempSensorKeys.size(); ++sensor)
        LoadTempSensorMatrix(sensor, ReadTableLine(std::string(tempSensorSection),
                                                   std::string(tempSensorKeys[sensor]),
                                                   sensorCountField, firstSensorRow));
}

std::vector<std::string> SaveSettings() {
    LineWriter writer;
    writer.WriteText(section::project, key::projectName, ProjectInfo.ProjectName, "project name");
    writer.WriteText(section::project, key::experimentDate, ProjectInfo.ExperimentDate,
                     "experiment date");
    writer.WriteText(section::project, key::experimentator, ProjectInfo.Experimentator,
                     "name of the analyst");
    writer.WriteText(section::project, key::location, ProjectInfo.MeasurementFileLocation,
                     "path of the data folder");
    writer.WriteNumber(section::hardware, key::portNumber, HardwareSettings.HardwarePortNumber);
    writer.WriteNumber(section::hardware, key::averagingForCalibration,
                       HardwareSettings.AveragingForCalibration);
    writer.WriteNumber(section::hardware, key::averagingForMeasurement,
                       HardwareSettings.AveragingForMeasurement);
    writer.WriteNumber(section::window, key::x, WindowX);
    writer.WriteNumber(section::window, key::y, WindowY);
    for (std::size_t i = 0; i < ChannelsInUse(); ++i) {
        if (Calibration[i].PointCount > 0)
            writer.WriteCalibration(section::calibrations, key::channels[i], Calibration[i], i);
        else
            writer.WriteLine(section::calibrations, key::channels[i], {});
        if (!ChannelSetup[i].Electrode.empty())
            writer.WriteChannel(section::electrodes, key::channels[i], ChannelSetup[i], i);
    }
    return writer.TakeMessages();
}

std::size_t ChannelsInUse() {
    return static_cast<std::size_t>(std::clamp<int>(HardwareSettings.ChannelCount, 0, maxChannels));
}

Measure::InputTables ConversionTables() {
    std::array<std::string_view, maxChannels> electrodes;
    for (std::size_t i = 0; i < electrodes.size(); ++i)
        electrodes[i] = ChannelSetup[i].Electrode;
    return {electrodes, Calibration, TempSensor};
}

void Reset(int channelCount) {
    ProjectInfo = {};
    HardwareSettings = {};
    HardwareSettings.ChannelCount = static_cast<std::int16_t>(channelCount);
    ChannelSetup = {};
    Calibration = {};
    TempSensor = {};
    WindowX = 0;
    WindowY = 0;
}

} // namespace mWinInit
