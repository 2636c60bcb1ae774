#include "report/PageReading.h"

namespace Mreport {

namespace {

/// Where the pages' last whole line ends.
std::uint64_t StartOf(ReportPages& pages, PageFiller& filler) {
    filler.Resume();
    pages.ReopenLastLine();
    return pages.NextOffset();
}

} // namespace

PageReading::PageReading(ReportPages& pages, PageFiller& filler, std::function<bool()> givenUp)
    : filler_(filler), scanner_(pages.Source(), StartOf(pages, filler)) {
    scanner_.onLongLine = std::move(givenUp);
}

PageReading::Taken PageReading::Put(const ScannedLine& line) {
    const ReportPages::Added added = filler_.TakeLine(line);
    return {1, line.length, line.text, added.step, added.newPage};
}

std::optional<PageReading::Taken> PageReading::TakeLine() {
    ScannedLine line;
    if (!scanner_.Next(line))
        return std::nullopt;
    return Put(line);
}

std::optional<PageReading::Taken> PageReading::Take(std::uint64_t limit) {
    if (const auto record = filler_.TakeRecord(scanner_, limit))
        return Taken{static_cast<int>(record->lines), record->length, {}};
    ScannedLine line;
    if (!scanner_.Next(line))
        return std::nullopt;
    if (!filler_.PageEnded())
        return Put(line);
    filler_.NewPage();
    Taken taken = Put(line);
    taken.newPage = true;
    return taken;
}

} // namespace Mreport
