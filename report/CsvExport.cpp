#include "report/CsvExport.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/DateText.h"
#include "base/Utf8.h"
#include "files/MeasurementLines.h"
#include "platform/Platform.h"
#include "report/ViewedFile.h"

#include <algorithm>
#include <array>

namespace Mreport {

namespace {

using Rows = PerQuantity<bool>;
using Cells = PerQuantity<std::array<std::string, maxChannels>>;

constexpr std::string_view timePattern = "00:00:00 00.aaa.0000";

bool FitsPattern(std::string_view text) {
    const auto fits = [](char c, char pattern) {
        const bool digit = c >= '0' && c <= '9';
        return pattern == '0' ? digit : pattern == 'a' || c == pattern;
    };
    return text.size() == timePattern.size() &&
           std::equal(text.begin(), text.end(), timePattern.begin(), fits);
}

/// The same in UTF-8, and never quoted.
bool IsPlain(char letter) {
    return letter >= ' ' && letter <= '~' && letter != ',' && letter != '"';
}

/// Gathers the lines that are written: each is small, and there are many.
class BufferedLines {
public:
    explicit BufferedLines(const CsvSink& sink) : sink_(sink) {}

    void Add(std::string_view line) {
        pending_ += line;
        pending_ += "\r\n";
        if (pending_.size() >= blockSize)
            Flush();
    }
    void Flush() {
        sink_(pending_);
        pending_.clear();
    }

private:
    static constexpr std::size_t blockSize = std::size_t{64} * 1024;

    const CsvSink& sink_;
    std::string pending_;
};

/// Which rows the records have, and how many columns.
struct Shape {
    Rows rows{};
    std::size_t channels = 0;
};

/// Lines looked at between two looks at the event queue: some tenths of a millisecond. The pages
/// may grow meanwhile, so no walk over them is under way when events run.
constexpr std::size_t linesPerStep = 512;

/// Visits all lines of all pages until `stop` says so; false then.
template <class Visit>
bool ForEachLineOfFile(const ReportPages& pages, Visit visit, const std::function<bool()>& stop) {
    for (int page = 0; page < pages.Count(); ++page) {
        for (std::size_t line = 0; line < pages.LineCount(page); line += linesPerStep) {
            Mcommon::LetEventsRun();
            if (stop())
                return false;
            pages.ForEachLine(page, line, line + linesPerStep,
                              [&visit](ReportPages::Line, std::string_view text) {
                                  visit(text);
                                  return true;
                              });
        }
    }
    return true;
}

class Exporter {
public:
    Exporter(const ViewedFile& file, const CsvWish& wish, const CsvSink& sink,
             const std::function<bool()>& stop)
        : file_(file), wish_(wish), lines_(sink), stop_(stop) {}

    /// False when it was stopped.
    bool Run() {
        if (!FindShape())
            return false;
        WriteHeading();
        if (!ForEachLineOfFile(
                file_.pages, [this](std::string_view line) { TakeLine(line); }, stop_))
            return false;
        WriteRecord();
        lines_.Flush();
        return true;
    }

    std::int32_t Records() const { return records_; }

private:
    bool FindShape() {
        shape_.channels = file_.channelCount;
        const auto note = [this, walk = RecordWalk()](std::string_view line) mutable {
            if (walk.Take(line) != RecordWalk::Step::row)
                return;
            if (const auto quantity = MeasurementLines::QuantityOf(line)) {
                shape_.rows[*quantity] = true;
                shape_.channels =
                    std::max(shape_.channels, MeasurementLines::SplitCells(line).count);
            }
        };
        return ForEachLineOfFile(file_.pages, note, stop_);
    }

    void WriteHeading() {
        std::string row = "Record,Time,Comment";
        for (const auto& each : Quantities::table)
            for (std::size_t i = 0; shape_.rows[each.quantity] && i < shape_.channels; ++i)
                AddField(row, Heading(i, each.label));
        lines_.Add(row);
    }

    /// "Chan 1 Ca (mV)".
    std::string Heading(std::size_t channel, std::string_view unit) const {
        const std::string& electrode = file_.header.channels[channel].electrode;
        return "Chan " + std::to_string(channel + 1) + (electrode.empty() ? "" : " " + electrode) +
               " (" + std::string(unit) + ")";
    }

    void TakeLine(std::string_view line) {
        switch (walk_.Take(line)) {
        case RecordWalk::Step::begins:
            WriteRecord(); // one that was cut off
            recordLine_ = walk_.FirstLine();
            comment_ = MeasurementLines::CommentText(line);
            break;
        case RecordWalk::Step::row:
            if (const auto quantity = MeasurementLines::QuantityOf(line))
                KeepRow(*quantity, line);
            break;
        case RecordWalk::Step::ends:
            WriteRecord();
            break;
        case RecordWalk::Step::other:
        case RecordWalk::Step::separator:
            break;
        }
    }

    void KeepRow(Quantity quantity, std::string_view line) {
        const auto found = MeasurementLines::SplitCells(line);
        for (std::size_t i = 0; i < found.count; ++i) {
            std::string cell = Mcommon::TrimControl(found.cell[i]);
            if (MeasurementLines::IsMissing(cell))
                cell = Quantities::IsOfSensors(quantity) ? OfSharedSensor(found, i) : "";
            cells_[quantity][i] = std::move(cell);
        }
    }

    /// An idle channel's sensor may have been read through another channel.
    std::string OfSharedSensor(const MeasurementLines::Cells& cells, std::size_t channel) const {
        const int sensor = file_.channelNumber[channel];
        if (sensor < 1 || file_.channelKind[channel] == Electrode::Kind::none)
            return {};
        return file_.SensorCell(cells, sensor).value_or("");
    }

    static void AddField(std::string& row, std::string_view text) {
        row += ',';
        if (std::ranges::all_of(text, IsPlain)) // nearly every field; a week has millions
            row += text;
        else
            row += CsvField(CodePage::ToUtf8(text));
    }

    bool IsWanted(std::int64_t place) const {
        return !wish_.span || (place >= wish_.span->first && place < wish_.span->end);
    }

    void WriteRecord() {
        if (recordLine_.empty())
            return;
        if (IsWanted(place_++))
            AddRecord();
        recordLine_.clear();
        cells_ = {};
    }

    void AddRecord() {
        std::string row = std::to_string(MeasurementLines::RecordNumber(recordLine_));
        AddField(row, IsoTime(Mcommon::TrimControl(MeasurementLines::TimeStamp(recordLine_))));
        AddField(row, comment_);
        for (const auto& each : Quantities::table)
            for (std::size_t i = 0; shape_.rows[each.quantity] && i < shape_.channels; ++i)
                AddField(row, cells_[each.quantity][i]);
        lines_.Add(row);
        ++records_;
    }

    const ViewedFile& file_;
    const CsvWish& wish_;
    BufferedLines lines_;
    const std::function<bool()>& stop_;
    Shape shape_;
    RecordWalk walk_;
    std::string recordLine_;
    std::string comment_;
    Cells cells_;
    std::int64_t place_ = 0; ///< of the next record in the run
    std::int32_t records_ = 0;
};

} // namespace

std::string IsoTime(std::string_view timeStamp) {
    if (!FitsPattern(timeStamp))
        return std::string(timeStamp);
    const int month = DateText::MonthOf(timeStamp.substr(12, 3));
    if (month == 0)
        return std::string(timeStamp);
    const auto number = std::to_string(100 + month).substr(1);
    return std::string(timeStamp.substr(16, 4)) + "-" + number + "-" +
           std::string(timeStamp.substr(9, 2)) + "T" + std::string(timeStamp.substr(0, 8));
}

std::string CsvField(std::string_view utf8) {
    if (utf8.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::string(utf8);
    std::string quoted = "\"";
    for (const char c : utf8)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::optional<std::int32_t> WriteCsv(const ViewedFile& viewed, const CsvWish& wish,
                                     const CsvSink& sink, const std::function<bool()>& stop) {
    if (wish.reader == CsvReader::spreadsheet)
        sink(Utf8::byteOrderMark);
    Exporter exporter(viewed, wish, sink, stop);
    if (!exporter.Run())
        return std::nullopt;
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
    viewed.pages.RefuseDamaged();
    replacement->Commit();
    return *records;
}

} // namespace Mreport
