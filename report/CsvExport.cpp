#include "report/CsvExport.h"

#include "app/Mcommon.h"
#include "base/Letters.h"
#include "base/Utf8.h"
#include "platform/Platform.h"
#include "report/CsvLines.h"
#include "report/IsoTime.h"
#include "report/RunReader.h"
#include "report/ViewedFile.h"

#include <algorithm>
#include <array>

namespace Mreport {

namespace {

/// Which rows the records have, and how many columns.
struct Shape {
    PerQuantity<bool> rows{};
    std::size_t channels = 0;
};

/// Bytes read between two looks at the event queue: some hundredths of a millisecond, or tenths
/// where the lines come one by one. The pages may grow meanwhile.
constexpr std::uint64_t bytesPerStep = std::uint64_t{32} * 1024;

/// What the pages hold at a moment, whatever they gain from then on.
class PagesText : public TextSource {
public:
    explicit PagesText(const ReportPages& pages) : pages_(pages), end_(pages.NextOffset()) {}

    std::uint64_t Size() override { return end_; }
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override {
        if (offset >= end_)
            return 0;
        const auto length = std::min<std::uint64_t>(end_ - offset, buffer.size());
        return pages_.ReadHeld(offset, buffer.first(static_cast<std::size_t>(length)));
    }

private:
    const ReportPages& pages_;
    std::uint64_t end_;
};

class Exporter {
public:
    Exporter(const ViewedFile& file, const CsvWish& wish, const CsvSink& sink,
             const std::function<bool()>& stop)
        : file_(file), text_(file.pages), wish_(wish), lines_(sink), stop_(stop) {}

    /// False when it was stopped.
    bool Run() {
        if (!FindShape())
            return false;
        WriteHeading();
        const auto takeRecord = [this](RunReader& reader) { TakeRecord(reader); };
        const auto takeLine = [this](const RunReader& reader) { TakeLine(reader); };
        if (!ForAll(takeRecord, takeLine))
            return false;
        WriteRecord();
        lines_.Flush();
        return true;
    }

    std::int32_t Records() const { return records_; }

private:
    /// Visits each record or line until `stop` says so; false then.
    template <class TakeRecord, class TakeLine>
    bool ForAll(TakeRecord takeRecord, TakeLine takeLine) {
        RunReader reader(text_, file_.pages.Bytes(0).begin, text_.Size());
        if (file_.pages.IsUtf8())
            reader.ReadLinesAlone();
        std::uint64_t step = 0;
        for (;;) {
            if (reader.NextOffset() >= step) {
                step = reader.NextOffset() + bytesPerStep;
                Mcommon::LetEventsRun();
                if (stop_())
                    return false;
            }
            switch (reader.Next()) {
            case RunReader::Found::record:
                takeRecord(reader);
                break;
            case RunReader::Found::line:
                takeLine(reader);
                break;
            case RunReader::Found::end:
                return true;
            }
        }
    }

    /// As Windows-1252, until the next line.
    std::string_view TextOf(const ScannedLine& line) {
        if (!file_.pages.IsUtf8())
            return line.text;
        decoded_ = file_.pages.Decoded(line.text);
        return decoded_;
    }

    bool FindShape() {
        shape_.channels = file_.channelCount;
        const auto note = [this](Quantity quantity, std::size_t cells) {
            shape_.rows[quantity] = true;
            shape_.channels = std::max(shape_.channels, cells);
        };
        const auto noteRecord = [&note](RunReader& reader) {
            if (reader.Record().cellsAsBefore)
                return;
            for (const RowCells& row : reader.Rows())
                note(row.quantity, row.cells.count);
        };
        const auto noteLine = [this, &note](const RunReader& reader) {
            const std::string_view line = TextOf(reader.Line());
            if (reader.Step() != RecordWalk::Step::row)
                return;
            if (const auto quantity = MeasurementLines::QuantityOf(line))
                note(*quantity, MeasurementLines::SplitCells(line).count);
        };
        return ForAll(noteRecord, noteLine);
    }

    void WriteHeading() {
        lines_.AddReady("Record,Time,Comment");
        for (const auto& each : Quantities::table)
            for (std::size_t i = 0; shape_.rows[each.quantity] && i < shape_.channels; ++i)
                lines_.Add(Heading(i, each.label));
        lines_.EndLine();
    }

    /// "Chan 1 Ca (mV)".
    std::string Heading(std::size_t channel, std::string_view unit) const {
        const std::string& electrode = file_.header.channels[channel].electrode;
        return "Chan " + std::to_string(channel + 1) + (electrode.empty() ? "" : " " + electrode) +
               " (" + std::string(unit) + ")";
    }

    void TakeRecord(RunReader& reader) {
        if (!IsWanted(place_++))
            return;
        for (const RowCells& row : reader.Rows())
            KeepRow(row.quantity, row.cells);
        const AlikeRecord& record = reader.Record();
        AddRecord(record.first, MeasurementLines::CommentText(record.comment));
        cells_ = {};
    }

    void TakeLine(const RunReader& reader) {
        const std::string_view line = TextOf(reader.Line());
        switch (reader.Step()) {
        case RecordWalk::Step::begins:
            WriteRecord(); // one that was cut off
            recordLine_ = file_.pages.Decoded(reader.Walk().FirstLine());
            comment_ = MeasurementLines::CommentText(line);
            break;
        case RecordWalk::Step::row:
            if (const auto quantity = MeasurementLines::QuantityOf(line))
                TakeRow(*quantity, MeasurementLines::SplitCells(line));
            break;
        case RecordWalk::Step::ends:
            WriteRecord();
            break;
        case RecordWalk::Step::other:
        case RecordWalk::Step::separator:
            break;
        }
    }

    void KeepRow(Quantity quantity, const MeasurementLines::Cells& found) {
        for (std::size_t i = 0; i < found.count; ++i) {
            std::string_view cell =
                Letters::WithoutControl(MeasurementLines::WithoutPadding(found.cell[i]));
            if (MeasurementLines::IsMissing(cell))
                cell = Quantities::IsOfSensors(quantity) ? OfSharedSensor(found, i) : "";
            cells_[quantity][i] = cell;
        }
    }

    /// The line is gone when the record is written.
    void TakeRow(Quantity quantity, const MeasurementLines::Cells& found) {
        KeepRow(quantity, found);
        for (std::size_t i = 0; i < found.count; ++i) {
            kept_[quantity][i] = cells_[quantity][i];
            cells_[quantity][i] = kept_[quantity][i];
        }
    }

    /// An idle channel's sensor may have been read through another channel.
    std::string_view OfSharedSensor(const MeasurementLines::Cells& cells,
                                    std::size_t channel) const {
        const int sensor = file_.channelNumber[channel];
        if (sensor < 1 || file_.channelKind[channel] == Electrode::Kind::none)
            return {};
        return file_.SensorCell(cells, sensor).value_or("");
    }

    bool IsWanted(std::int64_t place) const {
        return !wish_.span || (place >= wish_.span->first && place < wish_.span->end);
    }

    /// The record whose lines were taken one by one.
    void WriteRecord() {
        if (recordLine_.empty())
            return;
        if (IsWanted(place_++))
            AddRecord(recordLine_, comment_);
        recordLine_.clear();
        cells_ = {};
    }

    void AddRecord(std::string_view firstLine, std::string_view comment) {
        lines_.Add(std::to_string(MeasurementLines::RecordNumber(firstLine)));
        lines_.Add(times_.Of(Letters::WithoutControl(MeasurementLines::TimeStamp(firstLine))));
        lines_.Add(comment);
        for (const auto& each : Quantities::table)
            for (std::size_t i = 0; shape_.rows[each.quantity] && i < shape_.channels; ++i)
                lines_.Add(cells_[each.quantity][i]);
        lines_.EndLine();
        ++records_;
    }

    const ViewedFile& file_;
    PagesText text_;
    const CsvWish& wish_;
    CsvLines lines_;
    const std::function<bool()>& stop_;
    Shape shape_;
    std::string recordLine_;
    std::string comment_;
    std::string decoded_; ///< the line at hand of a file that is coded otherwise
    PerQuantity<std::array<std::string_view, maxChannels>> cells_; ///< of the record at hand
    PerQuantity<std::array<std::string, maxChannels>> kept_;       ///< behind them, if need be
    IsoTimes times_;
    std::int64_t place_ = 0; ///< of the next record in the run
    std::int32_t records_ = 0;
};

} // namespace

std::optional<std::int32_t> WriteCsv(const ViewedFile& viewed, const CsvWish& wish,
                                     const CsvSink& sink, const std::function<bool()>& stop) {
    if (wish.reader == CsvReader::spreadsheet)
        sink(Utf8::byteOrderMark);
    Exporter exporter(viewed, wish, sink, stop);
    if (!exporter.Run())
        return std::nullopt;
    viewed.pages.RefuseDamaged();
    return exporter.Records();
}

std::int32_t ExportCsv(const ViewedFile& viewed, const std::filesystem::path& file,
                       const CsvWish& wish, const std::function<bool()>& stop) {
    const auto replacement =
        platform::Current().files.BeginReplacement(file, platform::Readers::asUsual);
    const auto records = WriteCsv(
        viewed, wish, [&](std::string_view text) { replacement->Write(text); }, stop);
    if (!records)
        return 0;
    replacement->Commit();
    return *records;
}

} // namespace Mreport
