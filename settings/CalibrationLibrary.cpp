#include "settings/StoredLines.h"

#include "base/Electrode.h"
#include "platform/Platform.h"

namespace mWinInit {

namespace {

const std::string librarySection = "All Calibration Info";

std::string LibraryKey(std::int16_t channel, const char* store, const std::string& electrode) {
    return "Chan" + std::to_string(channel + 1) + store + electrode;
}

std::string CalibrationKey(std::int16_t channel, const std::string& electrode) {
    return LibraryKey(channel, "_Cali_", electrode);
}

std::string ElectrodeKey(std::int16_t channel, const std::string& electrode) {
    return LibraryKey(channel, "_Electrodes_", electrode);
}

} // namespace

std::vector<std::string> SaveCalibrationInfo(const std::string& electrode, std::int16_t channel) {
    const auto index = static_cast<std::size_t>(channel);
    LineWriter writer;
    if (Calibration[index].PointCount > 0)
        writer.WriteCalibration(librarySection, CalibrationKey(channel, electrode),
                                Calibration[index], channel);
    if (!ChannelSetup[index].Electrode.empty())
        writer.WriteChannel(librarySection, ElectrodeKey(channel, electrode), ChannelSetup[index],
                            channel);
    return writer.TakeMessages();
}

void LoadCalibrationInfo(const std::string& electrode, std::int16_t channel) {
    const auto index = static_cast<std::size_t>(channel);
    DecodeChannel(ChannelSetup[index],
                  platform::Current().profile.GetString(
                      librarySection, ElectrodeKey(channel, electrode), {}, longestValue + 1));
    DecodeCalibration(Calibration[index],
                      ReadTableLine(librarySection, CalibrationKey(channel, electrode),
                                    calibrationCountField, firstCalibrationPoint),
                      Electrode::KindOf(electrode) == Electrode::Kind::pH);
}

} // namespace mWinInit
