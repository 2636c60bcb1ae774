#include "report/PrintLayout.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "files/RecordWalk.h"
#include "report/PrintColumns.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace Mreport {

namespace {

constexpr std::array<int, 5> columnsOfFour = {0, 20, 35, 50, 65};
constexpr std::array<int, 9> columnsOfEight = {0, 15, 26, 37, 48, 59, 70, 81, 92};
constexpr int widestValue = 10; // -1.23E+04 and a blank
/// Title and headings; a body line begins below them and, by the rule for a new page, always ends
/// above the end of the page.
constexpr int headerLines = 2;
constexpr int linesKept = 3;
constexpr float headerRuleHeight =
    1.9F; // of its lines; clear of the headings and of the first line

std::span<const int> Columns(int channelCount) {
    if (channelCount > static_cast<int>(columnsOfFour.size()) - 1)
        return columnsOfEight;
    return columnsOfFour;
}

std::vector<std::string> SplitAtTabs(std::string_view line) {
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= line.size();) {
        const std::size_t tab = std::min(line.find('\t', start), line.size());
        parts.push_back(Mcommon::TrimControl(line.substr(start, tab - start)));
        start = tab + 1;
    }
    return parts;
}

/// One printed table: the page header, and lines below it.
class TablePrint {
public:
    TablePrint(platform::Printer& printer, const TableReport& report)
        : printer_(printer), report_(report), columns_(Columns(report.channelCount)) {
        size_pt_ = PrintColumns::FittingSize(printer, columns_.back() + widestValue);
        printer_.SetFont({size_pt_});
        lineHeight_ = PrintColumns::LineHeight(printer_);
        ruleEnd_ = printer_.PageWidth() - 2 * printer_.TextWidth("ABC");
        PrintHeader();
    }

    void Line(std::string_view line) {
        if (MeasurementLines::IsSeparator(line))
            Separator();
        else if (MeasurementLines::IsComment(line))
            Comment(line);
        else if (line.starts_with(MeasurementTexts::projectName))
            FreeText(line);
        else
            Cells(SplitAtTabs(line));
    }

    /// Starts a page where so many lines do not fit this one but fit the next.
    void KeepTogether(int lines) {
        if (linesOnPage_ == 0 || Fits(linesOnPage_ + lines - 1) || !Fits(lines - 1))
            return;
        printer_.NewPage();
        PrintHeader();
    }

    /// Lines of paper that a line of the list takes.
    int LinesOf(std::string_view line) const {
        if (!MeasurementLines::IsComment(line))
            return 1;
        const float room = ruleEnd_ - ColumnX(1);
        const std::string text = Mcommon::TrimControl(MeasurementLines::CommentText(line));
        return static_cast<int>(PrintColumns::Wrap(text, CharactersIn(room)).size());
    }

private:
    /// Whether a line belongs on the page behind so many.
    bool Fits(int linesBefore) const {
        return static_cast<float>(linesBefore + linesKept) * lineHeight_ < printer_.PageHeight();
    }

    void PrintHeader() {
        printer_.SetFont({size_pt_, true});
        const std::string pageAndDate =
            "Page " + std::to_string(printer_.PageNumber()) + "   " + report_.date;
        const float right = ruleEnd_ - printer_.TextWidth(pageAndDate);
        PrintColumns::PrintAt(printer_, {0, 0},
                              FittingTitle(printer_, {report_.channelCount, report_.name},
                                           right - printer_.TextWidth("ABC")));
        PrintColumns::PrintAt(printer_, {right, 0}, pageAndDate);
        for (std::size_t channel = 1; channel < columns_.size(); ++channel)
            PrintColumns::PrintAt(printer_, {ColumnX(channel), lineHeight_},
                                  "Chan " + std::to_string(channel));
        Rule(headerRuleHeight * lineHeight_);
        printer_.SetFont({size_pt_});
        linesOnPage_ = 0;
    }

    /// Makes room for a line: afterwards it belongs at the returned height.
    float StartLine() {
        if (!Fits(linesOnPage_) && linesOnPage_ > 0) {
            printer_.NewPage();
            PrintHeader();
        }
        return static_cast<float>(headerLines + linesOnPage_++) * lineHeight_;
    }

    void Separator() { Rule(StartLine()); }

    void Cells(const std::vector<std::string>& parts) {
        const float y = StartLine();
        const std::size_t count = std::min(parts.size(), columns_.size());
        for (std::size_t part = 0; part < count; ++part)
            if (!parts[part].empty())
                PrintColumns::PrintAt(printer_, {ColumnX(part), y}, parts[part]);
    }

    void Comment(std::string_view line) {
        const std::string text = Mcommon::TrimControl(MeasurementLines::CommentText(line));
        const float room = ruleEnd_ - ColumnX(1);
        bool first = true;
        for (const std::string& piece : PrintColumns::Wrap(text, CharactersIn(room))) {
            const float y = StartLine();
            if (first)
                PrintColumns::PrintAt(printer_, {0, y}, MeasurementTexts::comment);
            if (!piece.empty())
                PrintColumns::PrintAt(printer_, {ColumnX(1), y}, piece);
            first = false;
        }
    }

    void FreeText(std::string_view line) {
        std::string text(line);
        std::replace(text.begin(), text.end(), '\t', ' ');
        for (const std::string& piece : PrintColumns::Wrap(text, CharactersIn(ruleEnd_)))
            PrintColumns::PrintAt(printer_, {0, StartLine()}, piece);
    }

    void Rule(float y) { printer_.DrawLine({0, y}, {ruleEnd_, y}); }

    float ColumnX(std::size_t part) const { return PrintColumns::X(printer_, columns_[part]); }

    std::size_t CharactersIn(float width) const {
        return std::max<std::size_t>(1, PrintColumns::Fitting(printer_, width));
    }

    platform::Printer& printer_;
    const TableReport& report_;
    std::span<const int> columns_;
    float size_pt_ = 0;
    float lineHeight_ = 0;
    float ruleEnd_ = 0;
    int linesOnPage_ = 0;
};

/// The first line from `start` on with which a record begins whose number pleases; the line count
/// where there is none.
template <class Wanted>
std::size_t FindRecordLine(const PageText& page, std::size_t start, Wanted wanted) {
    const std::size_t count = page.LineCount();
    RecordWalk walk;
    for (std::size_t line = start; line < count; ++line) {
        Mcommon::LetEventsRun();
        if (walk.Take(page.Line(line)) == RecordWalk::Step::begins && wanted(walk.Number()))
            return line - 1;
    }
    return count;
}

/// Lines of paper that the record takes which begins at this line of the range; 0 where none does.
int LinesOfRecord(const TablePrint& table, const PageText& page, LineRange range) {
    if (range.first + 1 >= range.end || !MeasurementLines::IsRecordStart(page.Line(range.first)) ||
        !MeasurementLines::IsComment(page.Line(range.first + 1)))
        return 0;
    int lines = 0;
    RecordWalk walk;
    for (std::size_t at = range.first; at < range.end; ++at) {
        const std::string line = page.Line(at);
        const RecordWalk::Step step = walk.Take(line);
        if (step == RecordWalk::Step::begins && at != range.first + 1)
            return lines - 1; // the first line of the next one was counted
        lines += table.LinesOf(line);
        if (step == RecordWalk::Step::ends)
            break;
    }
    return lines;
}

} // namespace

std::string PrintTitle(int channelCount, std::string_view name, PrintKind kind) {
    std::string title = std::to_string(channelCount) + "-Channel Vantrel - ";
    title += name.empty() ? std::string_view("Noname") : name;
    title += kind == PrintKind::table ? " Report: Table" : " Report: Graphic";
    return title;
}

std::string FittingTitle(const platform::Printer& printer, const TableTitle& title, float width) {
    std::string name = title.name;
    std::string text = PrintTitle(title.channelCount, name, PrintKind::table);
    while (printer.TextWidth(text) > width && !name.empty()) {
        name.pop_back();
        text = PrintTitle(title.channelCount, name + "...", PrintKind::table);
    }
    return text;
}

LineRange FindPrintedLines(const TableReport& report, RecordRange range) {
    const PageText& page = report.page;
    const std::size_t count = page.LineCount();
    const auto isFirst = [range](std::int32_t number) { return number == range.first; };
    const auto isInside = [range](std::int32_t number) {
        return number >= range.first && number <= range.last;
    };
    const std::int64_t near =
        (std::int64_t{range.first} - report.firstRecordOfPage) * report.linesPerRecord;
    std::size_t first =
        FindRecordLine(page, static_cast<std::size_t>(std::max<std::int64_t>(near, 0)), isFirst);
    if (first == count)
        first = FindRecordLine(page, 0, isFirst);
    if (first == count)
        first = FindRecordLine(page, 0, isInside);
    if (first == count)
        throw RunTimeError("The list holds no record from " + std::to_string(range.first) + " to " +
                           std::to_string(range.last));
    const auto isBehind = [range](std::int32_t number) { return number > range.last; };
    return {first, FindRecordLine(page, first, isBehind)};
}

void PrintTable(platform::Printer& printer, const TableReport& report, RecordRange range,
                const std::function<void(const TableProgress&)>& progress) {
    Mcommon::errorLocation = "PrintTable";
    const LineRange lines = FindPrintedLines(report, range);
    TablePrint table(printer, report);
    for (std::size_t line = lines.first; line < lines.end; ++line) {
        Mcommon::LetEventsRun();
        if (printer.StopRequested())
            return;
        if (report.wholeRecords)
            table.KeepTogether(LinesOfRecord(table, report.page, {line, lines.end}));
        table.Line(report.page.Line(line));
        progress({line - lines.first + 1, lines.end - lines.first, printer.PageNumber()});
    }
}

} // namespace Mreport
