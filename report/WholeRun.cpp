#include "report/WholeRun.h"

#include "report/Selection.h"

#include <algorithm>

namespace Mreport::WholeRun {

std::vector<RunPiece> Pieces(const ReportPages& pages) {
    std::vector<RunPiece> pieces;
    pieces.reserve(static_cast<std::size_t>(pages.Count()));
    for (int page = 0; page < pages.Count(); ++page)
        pieces.push_back({pages.Bytes(page), pages.RecordCount(page)});
    return pieces;
}

std::int64_t FirstOfPage(const ReportPages& pages, int page) {
    std::int64_t records = 0;
    for (int before = 0; before < page; ++before)
        records += pages.RecordCount(before);
    return records;
}

std::int64_t Records(const ReportPages& pages) {
    return FirstOfPage(pages, pages.Count());
}

std::vector<int> Series(const ViewedFile& file, Quantity quantity) {
    std::vector<int> numbers;
    if (Quantities::IsOfSensors(quantity)) {
        for (int sensor = 1; sensor <= tempSensorCount; ++sensor)
            if (file.SensorUsed(sensor))
                numbers.push_back(sensor);
        return numbers;
    }
    for (std::size_t i = 0; i < file.channelCount; ++i)
        if (KindGives(file.channelKind[i], quantity))
            numbers.push_back(static_cast<int>(i + 1));
    return numbers;
}

std::vector<Quantity> QuantitiesOf(const ViewedFile& file) {
    std::vector<Quantity> quantities;
    for (const auto& row : Quantities::table)
        if (!Series(file, row.quantity).empty())
            quantities.push_back(row.quantity);
    return quantities;
}

std::vector<SeriesColumns> ColumnsOf(const ViewedFile& file, Quantity quantity,
                                     const std::vector<int>& series) {
    std::vector<SeriesColumns> columns;
    for (const int number : series) {
        SeriesColumns of;
        if (!Quantities::IsOfSensors(quantity))
            of.push_back(static_cast<std::size_t>(number - 1));
        for (std::size_t i = 0; Quantities::IsOfSensors(quantity) && i < maxChannels; ++i)
            if (file.channelKind[i] != Electrode::Kind::none && file.channelNumber[i] == number)
                of.push_back(i);
        columns.push_back(std::move(of));
    }
    return columns;
}

ScanWish Wish(const ViewedFile& file, Quantity quantity) {
    return {quantity, file.pages.IsUtf8()};
}

std::string SeriesName(Quantity quantity, int number) {
    return (Quantities::IsOfSensors(quantity) ? "Temp. " : "Ch. ") + std::to_string(number);
}

std::optional<ListPlace> PlaceInLists(const ReportPages& pages, std::int64_t place) {
    std::int64_t first = 0;
    for (int page = 0; page < pages.Count(); ++page) {
        const std::int64_t records = pages.RecordCount(page);
        if (place >= first && place < first + records)
            return ListPlace{page, place - first};
        first += records;
    }
    return std::nullopt;
}

} // namespace Mreport::WholeRun
