#include "screens/Report/ReportViews.h"

#include "files/MeasurementLines.h"
#include "report/WholeRun.h"
#include "screens/Report/GraphPage.h"
#include "screens/Report/RecordTableView.h"
#include "screens/Report/ReportLists.h"
#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/WheelZoom.h"

#include <QSignalBlocker>
#include <QTabBar>

#include <array>

ReportViews::ReportViews(const Mreport::ViewedFile& file, const Parts& parts, ReportLists& lists,
                         ReportMenus& menus)
    : file_(file), parts_(parts), lists_(lists), menus_(menus) {
    parts_.tabs.addTab("&Graph");
    parts_.tabs.addTab("&Table");
    parts_.tabs.addTab("&Records");
    parts_.tabs.setExpanding(false);
}

void ReportViews::Show(View view) {
    parts_.lines.setVisible(view == tableTab);
    parts_.graph.setVisible(view == graphTab);
    parts_.records.setVisible(view == recordsTab);
    if (view == recordsTab)
        parts_.records.ShowFile();
    const QSignalBlocker quiet(parts_.tabs);
    parts_.tabs.setCurrentIndex(view);
    constexpr std::array items{ReportMenus::graphView, ReportMenus::tableView,
                               ReportMenus::recordsView};
    menus_.ShowView(items[view]);
}

void ReportViews::Choose(ReportMenus::ViewItem item) {
    switch (item) {
    case ReportMenus::graphView:
        return ChooseTab(graphTab);
    case ReportMenus::tableView:
        return ChooseTab(tableTab);
    case ReportMenus::recordsView:
        return ChooseTab(recordsTab);
    case ReportMenus::zoomIn:
        return parts_.graph.Zoom(zoomStep);
    case ReportMenus::zoomOut:
        return parts_.graph.Zoom(1 / zoomStep);
    case ReportMenus::wholeSpan:
        return parts_.graph.ShowWholeSpan();
    case ReportMenus::selectChannels:
        break;
    }
}

/// The same as a click of the tab.
void ReportViews::ChooseTab(View view) {
    parts_.tabs.setCurrentIndex(view);
    Show(view); // the entry stays checked, chosen twice
}

bool ReportViews::RecordsInFront() const {
    return parts_.records.isVisible();
}

void ReportViews::FileGrown() {
    if (RecordsInFront())
        parts_.records.FileGrown();
}

void ReportViews::CopySelection() {
    if (RecordsInFront())
        parts_.records.CopySelection();
    else
        lists_.InFront().CopySelection();
}

void ReportViews::SelectAll() {
    if (RecordsInFront())
        parts_.records.selectAll();
    else
        lists_.InFront().SelectAll();
}

void ReportViews::BringRecord(const Mreport::LinePlace& place) {
    if (!lists_.Has(place.page))
        return;
    parts_.pages.setCurrentIndex(place.page);
    LineListView& list = lists_.At(place.page);
    list.LinesChanged();
    list.SetCurrentLine(static_cast<int>(place.line),
                        Mreport::CountLinesPerRecord(file_.pages) - 1);
    parts_.records.SelectRecord(place);
    const std::string text = file_.pages.Text(place.page, place.line);
    parts_.graph.BringIntoSpan({MeasurementLines::RecordNumber(text)});
}

void ReportViews::BringRecordAt(std::int64_t place, std::uint64_t offset) {
    const auto at = Mreport::WholeRun::PlaceInLists(file_.pages, place);
    if (!at)
        return;
    BringRecord({at->page, file_.pages.LineAt(at->page, offset)});
    parts_.graph.Run().BringIntoSpan(place);
}
