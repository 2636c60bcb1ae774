#include "screens/calibration/SlopeLines.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "chem/TheoreticalSlope.h"

#include <algorithm>

std::vector<SlopeLine> SlopeLines(const CalibrationRecord& record, std::string_view electrode) {
    std::vector<SlopeLine> lines;
    for (std::size_t s = 0; s + 1 < record.Points(); ++s) {
        const float slope = record.Slope[s];
        SlopeLine line{.points = std::to_string(s + 1) + " - " + std::to_string(s + 2),
                       .slope = Mcommon::FormatReading(slope),
                       .percent = {}};
        if (const auto percent = TheoreticalSlope::Percent(slope, electrode)) {
            line.percent = NumberText::Format(*percent, NumberText::Pattern::oneDecimal) + " %";
            line.usual = TheoreticalSlope::IsUsual(*percent);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string_view SlopeUnit(bool isPH) {
    return isPH ? "mV/pH" : "mV/decade";
}

std::string SlopeRemark(const std::vector<SlopeLine>& lines) {
    if (std::ranges::all_of(lines, &SlopeLine::usual))
        return {};
    return "A marked slope lies outside 90 to 105 % of theory at 25 \xB0"
           "C. Please check the standards, the electrode and the temperature.";
}
