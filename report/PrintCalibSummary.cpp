#include "report/PrintCalibSummary.h"

#include "app/Electrode.h"
#include "app/Mcommon.h"
#include "app/NumberText.h"
#include "platform/Platform.h"
#include "report/PrintColumns.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Measure {

namespace {

constexpr std::string_view title = "Calibration Summary";
constexpr int widestColumn = 100; // the slope column and a slope such as -1.23E+04
constexpr int labelColumn = 5;
constexpr int valueColumn = 30;
constexpr std::array<int, 4> headingColumns = {5, 30, 60, 80};
constexpr std::array<int, 4> pointColumns = {10, 35, 65, 88};
constexpr int largestText_pt = 10;
constexpr int smallestText_pt = 5;
constexpr float titleScale = 1.8F;

/// Writes line after line, each a text at a tab column.
class SummaryPage {
public:
    explicit SummaryPage(platform::Printer& printer)
        : printer_(printer), font_{PrintColumns::FittingSize(printer, widestColumn, largestText_pt,
                                                             smallestText_pt)} {}

    void Title(std::string_view text) {
        printer_.SetFont({font_.size_pt * titleScale, true});
        const float x = (printer_.PageWidth() - printer_.TextWidth(text)) / 2;
        PrintColumns::PrintAt(printer_, {x, y_}, text);
        y_ += 2 * PrintColumns::LineHeight(printer_);
        printer_.SetFont(font_);
    }

    void At(int column, std::string_view text) {
        PrintColumns::PrintAt(printer_, {PrintColumns::X(printer_, column), y_}, text);
    }

    void EndLine() { y_ += PrintColumns::LineHeight(printer_); }

private:
    platform::Printer& printer_;
    platform::PrintFont font_;
    float y_ = 0;
};

void DrawLabels(SummaryPage& page, const CalibSummary& summary) {
    const std::array<std::array<std::string, 2>, 4> lines = {{
        {"Electrode Type      :", Mcommon::TrimControl(summary.electrode)},
        {"Located Channel    :", "Channel " + std::to_string(summary.channel + 1)},
        {"Last Calib. Date    :", summary.record.CalibrationDate},
        {"Calibration Points :", std::to_string(summary.record.PointCount)},
    }};
    for (const auto& [label, value] : lines) {
        page.At(labelColumn, label);
        page.At(valueColumn, value);
        page.EndLine();
    }
}

void DrawHeadings(SummaryPage& page, bool isPH) {
    // An analyst who knows the printout expects these words for mol/l too.
    const std::array<std::string_view, 4> headings =
        isPH ? std::array<std::string_view, 4>{"Calibration Point:", "pH Buffer", "mV", "Slope"}
             : std::array<std::string_view, 4>{"Standards:", "Concentration(ppm)", "mV", "Slope"};
    for (std::size_t i = 0; i < headings.size(); ++i)
        page.At(headingColumns[i], headings[i]);
    page.EndLine();
}

void DrawPoint(SummaryPage& page, const CalibrationRecord& record, std::size_t point) {
    page.At(pointColumns[0], std::to_string(point + 1));
    page.At(pointColumns[1], NumberText::Plain(record.Standard[point]));
    page.At(pointColumns[2], NumberText::Plain(record.CaliData[point]));
    if (point > 0)
        page.At(pointColumns[3], NumberText::Plain(record.Slope[point - 1]));
    page.EndLine();
}

} // namespace

platform::PrintOutcome PrintCalibSummary(const CalibSummary& summary) {
    Mcommon::errorLocation = "PrintCalibSummary";
    return platform::Current().printing.Print(
        std::string(title),
        [&summary](platform::Printer& printer) { DrawCalibSummary(summary, printer); });
}

void DrawCalibSummary(const CalibSummary& summary, platform::Printer& printer) {
    SummaryPage page(printer);
    page.Title(title);
    DrawLabels(page, summary);
    page.EndLine();
    DrawHeadings(page, Mcommon::TrimControl(summary.electrode) == Electrode::pHName);
    const auto points = static_cast<std::size_t>(
        std::clamp<int>(summary.record.PointCount, 0, maxCalibrationPoints));
    for (std::size_t point = 0; point < points; ++point)
        DrawPoint(page, summary.record, point);
}

} // namespace Measure
