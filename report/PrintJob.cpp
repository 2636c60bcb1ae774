#include "report/PrintJob.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "platform/Platform.h"
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

} // namespace

RecordRange RecordsOfPage(const ViewedFile& file, int page) {
    const auto records = file.pages.Records(page);
    return records ? RecordRange{records->first, records->last} : RecordRange{};
}

std::string ReportTitle(const ViewedFile& file, PrintKind kind) {
    return PrintTitle(PrintedChannels(file), file.header.projectName, kind);
}

platform::PrintOutcome PrintPageTable(const ViewedFile& file, int page, RecordRange range,
                                      const std::function<void(const TableProgress&)>& progress) {
    const ListPageText text(file.pages, page);
    const TableReport report{text,
                             RecordsOfPage(file, page).first,
                             CountLinesPerRecord(file.pages),
                             PrintedChannels(file),
                             file.header.projectName,
                             DateText::PrintedPage(platform::Current().clock.Now())};
    return platform::Current().printing.Print(ReportTitle(file, PrintKind::table),
                                              [&](platform::Printer& printer) {
                                                  PrintTable(printer, report, range, progress);
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
