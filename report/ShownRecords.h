#pragma once

#include "report/ReportView.h"
#include "report/ShownGraph.h"

namespace Mreport {

/// Which records of the viewed file the graph and its scroll bar show: those of a page, up to the
/// one that the user scrolls to, or the newest ones of a run that is being recorded. Draws the
/// graph and sets the bar.
class ShownRecords {
public:
    /// All must outlive the object.
    ShownRecords(const ViewedFile& file, ShownGraph& shown, ReportView& view)
        : file_(file), shown_(shown), view_(view) {}

    /// The first drawing after a file is opened.
    void DrawFirst();

    /// Draws the span that ends with this record of the graph's page.
    void DrawUpTo(PageRecord end);

    /// Draws the span that the scroll bar stands at, and that of the page's newest records.
    void DrawAtScroll() { DrawUpTo(view_.ScrollValue()); }
    void DrawNewest();

    /// The page has got records: the scroll bar's limits follow, its place stays.
    void FitScroll() { SetScroll(false); }

    /// Another page: the scroll bar stands where that page is first shown.
    void ResetScroll() { SetScroll(true); }

    /// The lists show the page, and so does the graph; one that follows a recording stays with the
    /// newest page.
    void SelectPage(int page);

    /// Brings the page to the front of the lists and makes it the graph's, which is not drawn yet.
    void BringToFront(int page);

    /// The newest record of the graph's page, or the last one before a page that has none yet.
    FileRecord Newest() const;

    /// Shows what the lists have got behind the record that the live graph ended with.
    void Follow(FileRecord before);

private:
    PageRange Range() const { return GraphRange(file_, shown_); }
    void SetScroll(bool setValue);

    const ViewedFile& file_;
    ShownGraph& shown_;
    ReportView& view_;
};

} // namespace Mreport
