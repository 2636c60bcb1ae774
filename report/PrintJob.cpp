#include "report/PrintJob.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/DateText.h"
#include "platform/Platform.h"
#include "report/PrintCompact.h"
#include "report/PrintFirstPage.h"
#include "report/ViewedFile.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr float tallestGraph = 0.75F; // of its width; on upright paper a graph is no tower

/// A list page as printing takes it.
class ListPageText : public PageText {
public:
    ListPageText(const ReportPages& pages, int page) : pages_(pages), page_(page) {}

    std::size_t LineCount() const override { return pages_.LineCount(page_); }
    std::string Line(std::size_t index) const override { return pages_.Shown(page_, index); }

private:
    const ReportPages& pages_;
    int page_;
};

int PrintedChannels(const ViewedFile& file) {
    return file.channelCount > 4 ? 8 : 4;
}

std::string Today() {
    return DateText::PrintedPage(platform::Current().clock.Now());
}

using Progress = std::function<void(const TableProgress&)>;

void PrintLines(platform::Printer& printer, const ViewedFile& file, int page, RecordRange range,
                bool wholeRecords, const Progress& progress) {
    const ListPageText text(file.pages, page);
    const TableReport report{text,
                             RecordsOfPage(file, page).first,
                             CountLinesPerRecord(file.pages),
                             PrintedChannels(file),
                             file.header.projectName,
                             Today(),
                             wholeRecords};
    PrintTable(printer, report, range, progress);
}

void PrintCompact(platform::Printer& printer, const ViewedFile& file, int page, RecordRange range,
                  const Progress& progress) {
    RecordTable records(file);
    records.Reset();
    const auto [first, end] = records.RowsOf(page, range);
    const TableTitle title{PrintedChannels(file), file.header.projectName};
    PrintCompactTable(printer, {records, first, end, title, Today()}, progress);
}

} // namespace

RecordRange RecordsOfPage(const ViewedFile& file, int page) {
    const auto records = file.pages.Records(page);
    return records ? RecordRange{records->first, records->last} : RecordRange{};
}

std::string ReportTitle(const ViewedFile& file, PrintKind kind) {
    return PrintTitle(PrintedChannels(file), file.header.projectName, kind);
}

platform::PrintOutcome PrintPageTable(const ViewedFile& file, int page, RecordRange range,
                                      TableChoices choices,
                                      const std::function<void(const TableProgress&)>& progress) {
    const std::string title = ReportTitle(file, PrintKind::table);
    return platform::Current().printing.Print(title, [&](platform::Printer& printer) {
        if (choices.firstPage) {
            PrintFirstPage(printer, title,
                           CodePage::FromPath(file.path.filename()).value_or(std::string()),
                           file.header);
            printer.NewPage();
        }
        if (choices.compact)
            PrintCompact(printer, file, page, range, progress);
        else
            PrintLines(printer, file, page, range, choices.wholeRecords, progress);
        file.pages.RefuseDamaged();
    });
}

platform::PrintOutcome PrintGraph(const ViewedFile& file, const platform::Picture& graph) {
    Mcommon::errorLocation = "PrintGraph";
    return platform::Current().printing.Print(
        ReportTitle(file, PrintKind::graph), [&graph](platform::Printer& printer) {
            const float width = printer.PageWidth();
            printer.DrawPicture(
                graph, {{0, 0}, width, std::min(printer.PageHeight(), width * tallestGraph)});
        });
}

} // namespace Mreport
