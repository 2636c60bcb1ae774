#include "report/PrintCalibSummary.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"
#include "report/PrintColumns.h"

namespace Measure {

namespace {

constexpr int widestColumn = 96; // to the end of a slope such as -1.23E+04
constexpr float titleScale = 1.8F;

/// Writes line after line, each of texts at tab columns.
class SummaryPage {
public:
    explicit SummaryPage(platform::Printer& printer)
        : printer_(printer), font_{PrintColumns::FittingSize(printer, widestColumn)} {}

    void Title(std::string_view text) {
        printer_.SetFont({font_.size_pt * titleScale, true});
        const float x = (printer_.PageWidth() - printer_.TextWidth(text)) / 2;
        PrintColumns::PrintAt(printer_, {x, y_}, text);
        y_ += 2 * PrintColumns::LineHeight(printer_);
        printer_.SetFont(font_);
    }

    void Line(const CalibrationSummary::Line& line) {
        for (const CalibrationSummary::TabText& part : line)
            if (!part.text.empty())
                PrintColumns::PrintAt(printer_, {PrintColumns::X(printer_, part.column - 1), y_},
                                      part.text);
        y_ += PrintColumns::LineHeight(printer_);
    }

private:
    platform::Printer& printer_;
    platform::PrintFont font_;
    float y_ = 0;
};

} // namespace

platform::PrintOutcome PrintCalibSummary(std::string_view electrode, std::size_t channel,
                                         const CalibrationRecord& record) {
    const CalibrationSummary::Summary summary =
        CalibrationSummary::Compose(electrode, channel, record);
    return PrintCalibSummaries(std::span(&summary, 1));
}

platform::PrintOutcome PrintCalibSummaries(std::span<const CalibrationSummary::Summary> summaries) {
    Mcommon::errorLocation = "PrintCalibSummary";
    const auto draw = [summaries](platform::Printer& printer) {
        for (std::size_t i = 0; i < summaries.size(); ++i) {
            if (i > 0)
                printer.NewPage();
            DrawCalibSummary(summaries[i], printer);
        }
    };
    return platform::Current().printing.Print(summaries.front().title, draw);
}

void DrawCalibSummary(const CalibrationSummary::Summary& summary, platform::Printer& printer) {
    SummaryPage page(printer);
    page.Title(summary.title);
    for (const CalibrationSummary::Line& label : summary.labels)
        page.Line(label);
    page.Line({}); // sets the table off
    page.Line(summary.heading);
    for (const CalibrationSummary::Line& point : summary.points)
        page.Line(point);
}

} // namespace Measure
