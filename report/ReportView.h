#pragma once

#include "report/RecordNumber.h"
#include "report/ReportGraph.h"
#include "report/ShownGraph.h"

#include <filesystem>
#include <string>

namespace Mreport {

/// What the loader tells the viewer's form.
class ReportView {
public:
    virtual ~ReportView() = default;

    /// The caption "Report - " and the file's name.
    virtual void ShowCaption(const std::filesystem::path& file) = 0;

    /// Back to one tab "List &1" over an empty list, the lists' panel hidden, the graph empty with
    /// the left title "mV".
    virtual void ResetPages() = 0;

    virtual void ShowHead(const std::string& headerLines) = 0;
    virtual void ShowStatus(const std::string& text) = 0;

    /// A status that the next one follows soon; a viewer may leave some out.
    virtual void ShowProgress(const std::string& text) = 0;

    /// A list page and its tab are to be added; the one in front stays there.
    virtual void PageAdded(int page) = 0;

    /// The newest page has got lines; called now and then, not for each.
    virtual void LinesAdded() = 0;

    /// A load has read the file as far as it will: what needs all records may begin.
    virtual void FileRead() = 0;

    /// Selects the tab of shownPageIndex.
    virtual void SelectShownPage() = 0;

    /// Sets the scroll bar; called with scrollGuard set.
    virtual void SetScroll(const ScrollLimits& limits) = 0;
    virtual PageRecord ScrollValue() const = 0;

    virtual ReportGraph& Graph() = 0;

    /// The graph has been drawn anew.
    virtual void GraphDrawn(FileRecord firstRecord) = 0;
};

} // namespace Mreport
