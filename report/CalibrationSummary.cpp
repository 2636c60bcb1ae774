#include "report/CalibrationSummary.h"

#include "base/Electrode.h"
#include "base/NumberText.h"

namespace CalibrationSummary {

namespace {

Line Label(std::string label, std::string value) {
    return {{5, std::move(label)}, {30, std::move(value)}};
}

Line Heading(std::string_view electrode) {
    // The wording is the same for ppm and mol/l, as on every summary printed so far.
    const bool pH = electrode == Electrode::pHName;
    return {{5, pH ? "Calibration Point:" : "Standards:"},
            {30, pH ? "pH Buffer" : "Concentration(ppm)"},
            {60, "mV"},
            {80, "Slope"}};
}

Line Point(const CalibrationRecord& record, std::size_t j) {
    return {{10, NumberText::Plain(static_cast<std::int32_t>(j + 1))},
            {35, NumberText::Plain(record.Standard[j])},
            {65, NumberText::Plain(record.CaliData[j])},
            {88, j == 0 ? std::string() : NumberText::Plain(record.Slope[j - 1])}};
}

} // namespace

Summary Compose(std::string_view electrode, std::size_t channel, const CalibrationRecord& record) {
    Summary summary;
    summary.title = "Calibration Summary";
    const auto number = std::to_string(channel + 1);
    const auto count = NumberText::Plain(static_cast<std::int32_t>(record.PointCount));
    summary.labels = {Label("Electrode Type      :", std::string(electrode)),
                      Label("Located Channel    :", "Channel " + number),
                      Label("Last Calib. Date    :", record.CalibrationDate),
                      Label("Calibration Points :", count)};
    summary.heading = Heading(electrode);
    for (std::size_t j = 0; j < record.Points(); ++j)
        summary.points.push_back(Point(record, j));
    return summary;
}

} // namespace CalibrationSummary
