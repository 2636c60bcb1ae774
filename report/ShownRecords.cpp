#include "report/ShownRecords.h"

#include "report/GraphSpan.h"
#include "report/LiveGraph.h"

#include <algorithm>

namespace Mreport {

void ShownRecords::DrawFirst() {
    view_.GraphDrawn(InitGraphDraw(view_.Graph(), file_, shown_).firstRecord);
}

void ShownRecords::DrawUpTo(PageRecord end) {
    const PageRange range = Range();
    // The live graph grows with the file's first 50 records and then keeps its width.
    const std::int32_t records =
        shown_.autoUpdate ? range.InFile(range.Last()).number : range.recordsInPage;
    const Span span{shown_.graphPageIndex, end, std::clamp(records, 0, spanLength),
                    shown_.autoUpdate};
    view_.GraphDrawn(UpdateGraph(view_.Graph(), file_, shown_, span).firstRecord);
}

void ShownRecords::DrawNewest() {
    DrawUpTo(Range().Last());
}

void ShownRecords::SetScroll(bool setValue) {
    shown_.scrollGuard = true;
    view_.SetScroll(Mreport::ResetScroll(file_, shown_, setValue));
    shown_.scrollGuard = false;
}

void ShownRecords::SelectPage(int page) {
    shown_.shownPageIndex = page;
    if (page == shown_.graphPageIndex || shown_.autoUpdate)
        return;
    shown_.graphPageIndex = page;
    ResetScroll();
    DrawAtScroll();
}

void ShownRecords::BringToFront(int page) {
    shown_.graphPageIndex = shown_.shownPageIndex = page;
    view_.SelectShownPage();
}

FileRecord ShownRecords::Newest() const {
    const PageRange range = Range();
    return range.InFile(range.Last());
}

void ShownRecords::Follow(FileRecord before) {
    if (shown_.graphPageIndex != file_.LastPageIndex())
        BringToFront(file_.LastPageIndex());
    const FileRecord newest = Newest();
    if (newest.number - 1 == before.number)
        view_.GraphDrawn(DynUpdate(view_.Graph(), file_, shown_, newest).firstRecord);
    else if (newest != before) // several at once
        DrawNewest();
    ResetScroll();
}

} // namespace Mreport
