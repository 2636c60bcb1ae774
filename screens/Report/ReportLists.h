#pragma once

#include <vector>

class LineListView;
class QStackedWidget;
class QTabBar;

namespace Mreport {
class ReportPages;
}

/// The viewer's lists behind their tabs, one for each page of the file. What is set here runs no
/// handler of the tabs.
class ReportLists {
public:
    /// All must outlive the lists.
    ReportLists(QTabBar& tabs, QStackedWidget& stack, const Mreport::ReportPages& pages);

    /// Back to one tab "List &1" over the first page.
    void Reset();
    /// A list for the newest page, behind the others.
    void Add();
    void Show(int page);

    bool Has(int page) const { return page >= 0 && page < static_cast<int>(lstData_.size()); }
    LineListView& At(int page) const { return *lstData_.at(static_cast<std::size_t>(page)); }
    LineListView& Newest() const { return *lstData_.back(); }
    LineListView& InFront() const;

private:
    void AddList();

    QTabBar& tabs_;
    QStackedWidget& stack_;
    const Mreport::ReportPages& pages_;
    std::vector<LineListView*> lstData_; ///< owned by the stack
};
