#include "report/PrintJob.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "platform/Platform.h"
#include "report/Mreport.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr float tallestGraph = 0.75F; // of its width; on upright paper a graph is no tower

int PrintedChannels() {
    return channelCount > 4 ? 8 : 4;
}

} // namespace

RecordRange RecordsOfPage(int page) {
    const auto records = pages.Records(page);
    return records ? RecordRange{records->first, records->last} : RecordRange{};
}

std::string ReportTitle(PrintKind kind) {
    return PrintTitle(PrintedChannels(), projectName, kind);
}

platform::PrintOutcome PrintPageTable(int page, RecordRange range,
                                      const std::function<void(const TableProgress&)>& progress) {
    const ListPageText text(page);
    const TableReport report{
        text,           RecordsOfPage(page).first,
        linesPerRecord, PrintedChannels(),
        projectName,    DateText::PrintedPage(platform::Current().clock.Now())};
    return platform::Current().printing.Print(
        ReportTitle(PrintKind::table),
        [&](platform::Printer& printer) { PrintTable(printer, report, range, progress); });
}

platform::PrintOutcome PrintGraph(const platform::Picture& graph) {
    Mcommon::errorLocation = "PrintGraph";
    return platform::Current().printing.Print(
        ReportTitle(PrintKind::graph), [&graph](platform::Printer& printer) {
            const float width = printer.PageWidth();
            printer.DrawPicture(
                graph, {{0, 0}, width, std::min(printer.PageHeight(), width * tallestGraph)});
        });
}

} // namespace Mreport
