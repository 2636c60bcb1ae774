#include "report/PrintCompact.h"

#include "app/Mcommon.h"
#include "report/PrintColumns.h"

#include <algorithm>

namespace Mreport {

namespace {

using Kind = RecordTable::Column::Kind;
using Group = std::vector<std::size_t>;

constexpr int timeColumn = 9;
constexpr int firstValueColumn = 31; // behind "00:00:00 00.Mmm.0000"
constexpr int valueColumns = 10;     // -1.23E+04 and a blank
constexpr int linesKept = 1;         // at the end of a page

class CompactPrint {
public:
    CompactPrint(platform::Printer& printer, const CompactReport& report)
        : printer_(printer), report_(report) {
        const auto& columns = report_.records.Columns();
        const auto values = std::ranges::count(columns, Kind::value, &RecordTable::Column::kind);
        const int wanted = firstValueColumn + static_cast<int>(values) * valueColumns;
        size_pt_ = PrintColumns::FittingSize(printer_, wanted);
        printer_.SetFont({size_pt_});
        lineHeight_ = PrintColumns::LineHeight(printer_);
        groups_ =
            ColumnGroups(columns, static_cast<int>(printer_.PageWidth() / printer_.TextWidth("0")));
        PrintHeader();
    }

    void Row(std::int64_t row) {
        const auto comment = Comment(row);
        MakeRoom(groups_.size() + comment.size());
        At(0, report_.records.Text(row, 0));
        At(timeColumn, report_.records.Text(row, 1));
        PrintGroups([this, row](std::size_t column) { return report_.records.Text(row, column); });
        for (const std::string& line : comment) {
            At(timeColumn, line);
            NextLine();
        }
    }

private:
    /// In as many lines as it takes beside the record numbers.
    std::vector<std::string> Comment(std::int64_t row) const {
        const std::string text = report_.records.Text(row, 2);
        if (text.empty())
            return {};
        const float room = printer_.PageWidth() - PrintColumns::X(printer_, timeColumn);
        return PrintColumns::Wrap(text,
                                  std::max<std::size_t>(1, PrintColumns::Fitting(printer_, room)));
    }

    void At(int column, std::string_view text) {
        if (!text.empty())
            PrintColumns::PrintAt(printer_, {PrintColumns::X(printer_, column), y_}, text);
    }
    void NextLine() { y_ += lineHeight_; }

    void PrintGroups(const std::function<std::string(std::size_t)>& textOf) {
        for (const Group& group : groups_) {
            for (int place = firstValueColumn; const std::size_t column : group) {
                At(place, textOf(column));
                place += valueColumns;
            }
            NextLine();
        }
    }

    /// A record is not cut by the end of a page.
    void MakeRoom(std::size_t lines) {
        const float needed = static_cast<float>(lines + linesKept) * lineHeight_;
        if (y_ + needed <= printer_.PageHeight() || y_ == top_)
            return;
        printer_.NewPage();
        PrintHeader();
    }

    void PrintHeader() {
        y_ = 0;
        printer_.SetFont({size_pt_, true});
        const std::string page =
            "Page " + std::to_string(printer_.PageNumber()) + "   " + report_.date;
        const float right = printer_.PageWidth() - printer_.TextWidth(page);
        At(0, FittingTitle(printer_, report_.title, right - printer_.TextWidth("AB")));
        PrintColumns::PrintAt(printer_, {right, 0}, page);
        NextLine();
        At(0, "Record");
        At(timeColumn, "Time");
        const auto& columns = report_.records.Columns();
        PrintGroups([&columns](std::size_t column) { return ShortTitle(columns[column]); });
        printer_.DrawLine({0, y_}, {printer_.PageWidth(), y_});
        y_ += lineHeight_ / 2;
        printer_.SetFont({size_pt_});
        top_ = y_;
    }

    /// "Ch1 mol/l", "T2 °C"; the electrodes stand on the first page.
    static std::string ShortTitle(const RecordTable::Column& column) {
        const bool sensor = Quantities::IsOfSensors(column.quantity);
        return (sensor ? "T" : "Ch") + std::to_string(column.series) + " " +
               std::string(Quantities::Label(column.quantity));
    }

    platform::Printer& printer_;
    const CompactReport& report_;
    std::vector<Group> groups_;
    float size_pt_ = 0;
    float lineHeight_ = 0;
    float y_ = 0;
    float top_ = 0; ///< of the first record on a page
};

} // namespace

std::vector<Group> ColumnGroups(const std::vector<RecordTable::Column>& columns, int characters) {
    const int fitting = std::max(1, (characters - firstValueColumn) / valueColumns);
    std::vector<Group> groups(1);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (columns[column].kind != Kind::value)
            continue;
        if (std::ssize(groups.back()) == fitting)
            groups.emplace_back();
        groups.back().push_back(column);
    }
    return groups;
}

void PrintCompactTable(platform::Printer& printer, const CompactReport& report,
                       const std::function<void(const TableProgress&)>& progress) {
    Mcommon::errorLocation = "PrintTable";
    CompactPrint table(printer, report);
    const auto rows = static_cast<std::size_t>(report.endRow - report.firstRow);
    std::size_t printed = 0;
    for (std::int64_t row = report.firstRow; row < report.endRow; ++row) {
        Mcommon::LetEventsRun();
        if (printer.StopRequested())
            return;
        table.Row(row);
        progress({++printed, rows, printer.PageNumber()});
    }
}

} // namespace Mreport
