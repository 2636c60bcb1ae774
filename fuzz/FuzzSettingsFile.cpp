#include "NullPlatform.h"

#include "settings/mWinInit.h"

// A settings file of any content, and a line of any content in the program's own sections, loads
// within the limits of the records, and what is saved over
// it loads again as the same records.

namespace {

/// The input itself, or a file with the input as its lines.
std::string FileOf(std::string_view input) {
    if (input.empty() || input.front() != '=')
        return std::string(input);
    const std::string line(input);
    return "[Calibration Info]\r\nChannel One" + line + "\r\n[Electrodes Info]\r\nChannel One" +
           line + "\r\n[Temperature Sensor Calibration Matrix]\r\nTemp Sensor One" + line +
           "\r\n[Hardware]\r\nAveraging Number For Calibration" + line;
}

void RequireLimits() {
    using namespace mWinInit;
    for (const auto& record : Calibration)
        fuzz::Require(record.PointCount >= 0 && record.PointCount <= maxCalibrationPoints);
    for (const auto& table : TempSensor)
        fuzz::Require(table.PointCount >= 0 && table.PointCount <= maxTempSensorRows);
    fuzz::Require(ProjectInfo.ProjectName.size() <= 129);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::NullPlatform platform;
    platform.MakeFile("Vantrel.ini", FileOf(fuzz::Text(data, size)));
    mWinInit::Reset(8);
    mWinInit::LoadSettings();
    RequireLimits();
    const auto averaging = mWinInit::HardwareSettings.AveragingForCalibration;
    const auto points = mWinInit::Calibration[0].PointCount;
    const bool whole = mWinInit::SaveSettings().empty();
    mWinInit::LoadCalibrationInfo("Ca", 0);
    RequireLimits();
    mWinInit::LoadSettings();
    fuzz::Require(mWinInit::HardwareSettings.AveragingForCalibration == averaging);
    fuzz::Require(!whole || mWinInit::Calibration[0].PointCount == points);
    return 0;
}
