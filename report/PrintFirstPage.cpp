#include "report/PrintFirstPage.h"

#include "files/MeasurementTexts.h"
#include "report/PrintColumns.h"

#include <algorithm>
#include <functional>
#include <span>

namespace Mreport {

namespace {

using Channel = FileOpr::MeasurementHeader::Channel;

constexpr int labelColumns = 20; // "Report created at: " and a blank
constexpr int cellColumns = 13;  // a cell of 12 characters and a blank
constexpr float titleScale = 1.4F;
constexpr int signatureColumns = 30;

class FirstPage {
public:
    FirstPage(platform::Printer& printer, std::size_t channels)
        : printer_(printer), channels_(channels),
          size_pt_(PrintColumns::FittingSize(printer, labelColumns + static_cast<int>(channels) *
                                                                         cellColumns)) {}

    void Title(std::string_view text) {
        printer_.SetFont({size_pt_ * titleScale, true});
        Wrapped(0, text);
        Skip(1);
        printer_.SetFont({size_pt_});
    }

    void Line(std::string_view label, std::string_view text) {
        PrintColumns::PrintAt(printer_, {0, y_}, label);
        Wrapped(labelColumns, text);
    }

    /// A row with the cells of all channels; none where no channel has one.
    void Row(std::string_view label, const std::function<std::string(const Channel&)>& cellOf,
             const FileOpr::MeasurementHeader& header) {
        const auto channels = std::span(header.channels).first(channels_);
        if (std::ranges::all_of(channels, [&](const Channel& of) { return cellOf(of).empty(); }))
            return;
        PrintColumns::PrintAt(printer_, {0, y_}, label);
        for (int column = labelColumns; const Channel& channel : channels) {
            PrintColumns::PrintAt(printer_, {PrintColumns::X(printer_, column), y_},
                                  cellOf(channel));
            column += cellColumns;
        }
        Skip(1);
    }

    void Rule() {
        y_ += PrintColumns::LineHeight(printer_) / 2;
        printer_.DrawLine({0, y_}, {printer_.PageWidth(), y_});
        y_ += PrintColumns::LineHeight(printer_) / 2;
    }

    void Skip(int lines) { y_ += static_cast<float>(lines) * PrintColumns::LineHeight(printer_); }

    void Signature(std::string_view label, int column) {
        const float left = PrintColumns::X(printer_, column);
        printer_.DrawLine({left, y_}, {PrintColumns::X(printer_, column + signatureColumns), y_});
        const float below = y_ + PrintColumns::LineHeight(printer_) / 4;
        PrintColumns::PrintAt(printer_, {left, below}, label);
    }

private:
    /// From this column on, in as many lines as it takes.
    void Wrapped(int column, std::string_view text) {
        const float left = PrintColumns::X(printer_, column);
        const std::size_t room = PrintColumns::Fitting(printer_, printer_.PageWidth() - left);
        for (const std::string& line : PrintColumns::Wrap(text, std::max<std::size_t>(1, room))) {
            PrintColumns::PrintAt(printer_, {left, y_}, line);
            Skip(1);
        }
    }

    platform::Printer& printer_;
    std::size_t channels_;
    float size_pt_;
    float y_ = 0;
};

void PrintChannels(FirstPage& page, const FileOpr::MeasurementHeader& header) {
    using namespace MeasurementTexts;
    page.Row(channelRow, &Channel::name, header);
    page.Row(electrodeRow, &Channel::electrode, header);
    page.Row(serialNoRow, &Channel::serialNo, header);
    page.Row(refTypeRow, &Channel::refType, header);
    page.Row(refSerialNoRow, &Channel::refSerialNo, header);
    page.Row(tempSensorRow, &Channel::tempSensor, header);
}

/// Rows 1, 2, 3 ... of what each channel has several of.
template <class Items>
void PrintNumbered(FirstPage& page, std::string_view label, Items Channel::*items,
                   const FileOpr::MeasurementHeader& header) {
    for (std::size_t i = 0; i < Items().size(); ++i)
        page.Row(
            MeasurementTexts::NumberedRow(label, i + 1),
            [items, i](const Channel& channel) { return (channel.*items)[i]; }, header);
}

void PrintCalibration(FirstPage& page, const FileOpr::MeasurementHeader& header) {
    using namespace MeasurementTexts;
    page.Row(dateRow, &Channel::calibrationDate, header);
    page.Row(timeRow, &Channel::calibrationTime, header);
    page.Row(pointCountRow, &Channel::pointCount, header);
    page.Row(stdUnitRow, &Channel::stdUnit, header);
    PrintNumbered(page, standardRows, &Channel::standard, header);
    PrintNumbered(page, caliDataRows, &Channel::caliData, header);
    PrintNumbered(page, slopeRows, &Channel::slope, header);
}

} // namespace

void PrintFirstPage(platform::Printer& printer, std::string_view title, std::string_view fileName,
                    const FileOpr::MeasurementHeader& header) {
    constexpr int linesAboveSignature = 5;
    constexpr int secondSignature = 40; // column
    FirstPage page(printer, header.channelCount);
    page.Title(title);
    page.Line("File:", fileName);
    page.Line(MeasurementTexts::projectName, header.projectName);
    page.Line(MeasurementTexts::analyst, header.analyst);
    page.Line(MeasurementTexts::createdAt, header.createdAt);
    page.Rule();
    PrintChannels(page, header);
    page.Rule();
    if (header.hasCalibration)
        PrintCalibration(page, header);
    else
        page.Line(MeasurementTexts::calibrationInfo, "none");
    page.Rule();
    page.Skip(linesAboveSignature);
    page.Signature("Date", 0);
    page.Signature("Signature", secondSignature);
}

} // namespace Mreport
