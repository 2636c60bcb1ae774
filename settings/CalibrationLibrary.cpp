#include "settings/StoredLines.h"

#include "base/Electrode.h"

namespace mWinInit {

namespace {

const std::string librarySection = "All Calibration Info";

std::string LibraryKey(std::size_t channel, const char* store, const std::string& electrode) {
    return "Chan" + std::to_string(channel + 1) + store + electrode;
}

std::string CalibrationKey(std::size_t channel, const std::string& electrode) {
    return LibraryKey(channel, "_Cali_", electrode);
}

std::string ElectrodeKey(std::size_t channel, const std::string& electrode) {
    return LibraryKey(channel, "_Electrodes_", electrode);
}

} // namespace

std::vector<std::string> SaveCalibrationInfo(const std::string& electrode, std::size_t channel) {
    LineWriter writer;
    if (Calibration[channel].PointCount > 0)
        writer.WriteCalibration(librarySection, CalibrationKey(channel, electrode),
                                Calibration[channel], channel);
    if (!ChannelSetup[channel].Electrode.empty())
        writer.WriteChannel(librarySection, ElectrodeKey(channel, electrode), ChannelSetup[channel],
                            channel);
    return writer.TakeMessages();
}

void LoadCalibrationInfo(const std::string& electrode, std::size_t channel) {
    DecodeChannel(ChannelSetup[channel],
                  ReadChannelLine(librarySection, ElectrodeKey(channel, electrode)));
    DecodeCalibration(Calibration[channel],
                      ReadTableLine(librarySection, CalibrationKey(channel, electrode),
                                    calibrationCountField, firstCalibrationPoint),
                      Electrode::KindOf(electrode) == Electrode::Kind::pH);
}

} // namespace mWinInit
