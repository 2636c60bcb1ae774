#include "files/HeaderDifference.h"

#include <algorithm>
#include <vector>

namespace FileOpr {

namespace {

using Names = std::vector<std::string>;

std::string Joined(const Names& names, std::string_view separator) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty())
            text += separator;
        text += name;
    }
    return text;
}

/// Entries behind the points in use say nothing of the calibration.
bool SameCalibration(const CalibrationRecord& left, const CalibrationRecord& right) {
    if (left.PointCount != right.PointCount)
        return false;
    const std::size_t points = left.Points();
    if (points == 0)
        return true;
    const auto samePoints = [points](const auto& a, const auto& b) {
        return std::equal(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(points), b.begin());
    };
    return left.CalibrationDate == right.CalibrationDate && left.StdUnit == right.StdUnit &&
           samePoints(left.Standard, right.Standard) && samePoints(left.CaliData, right.CaliData);
}

Names ProjectDifferences(const mWinInit::ProjectInfoRecord& left,
                         const mWinInit::ProjectInfoRecord& right) {
    Names names;
    if (left.ProjectName != right.ProjectName)
        names.emplace_back("project name");
    if (left.Experimentator != right.Experimentator)
        names.emplace_back("analyst");
    return names;
}

Names ChannelDifferences(const HeaderRecords& left, const HeaderRecords& right, std::size_t i) {
    const mWinInit::ChannelSetupRecord& before = left.channels[i];
    const mWinInit::ChannelSetupRecord& after = right.channels[i];
    Names names;
    if (before.Electrode != after.Electrode)
        names.emplace_back("electrode");
    if (before.SerialNo != after.SerialNo)
        names.emplace_back("serial number");
    if (before.RefType != after.RefType || before.RefSerialNo != after.RefSerialNo)
        names.emplace_back("reference electrode");
    if (std::max<int>(before.TempSensor, 0) != std::max<int>(after.TempSensor, 0))
        names.emplace_back("temperature sensor");
    if (!SameCalibration(left.calibration[i], right.calibration[i]))
        names.emplace_back("calibration");
    return names;
}

} // namespace

HeaderRecords RecordsInForce() {
    return {mWinInit::ProjectInfo, mWinInit::ChannelSetup, mWinInit::Calibration};
}

std::string HeaderDifferences(const HeaderRecords& written, const HeaderRecords& now,
                              std::size_t channelCount) {
    Names parts;
    if (const Names names = ProjectDifferences(written.project, now.project); !names.empty())
        parts.push_back(Joined(names, ", "));
    for (std::size_t i = 0; i < std::min<std::size_t>(channelCount, maxChannels); ++i)
        if (const Names names = ChannelDifferences(written, now, i); !names.empty())
            parts.push_back("channel " + std::to_string(i + 1) + ": " + Joined(names, ", "));
    return Joined(parts, "; ");
}

std::string HeaderNotice(std::string_view differences, std::string_view fileName) {
    if (differences.empty())
        return {};
    return "Changed since the header of " + std::string(fileName) +
           " was written: " + std::string(differences);
}

} // namespace FileOpr
