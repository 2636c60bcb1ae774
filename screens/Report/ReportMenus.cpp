#include "screens/Report/ReportMenus.h"

ReportMenus::ReportMenus(const QWidget& form)
    : mnuFileItem(form, "mnuFileItem"), mnuViewItem(form, "mnuViewItem"),
      mnuToolItem(form, "mnuToolItem"), mnuUpdateItem(form, "mnuUpdateItem") {}

void ReportMenus::Allow(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown,
                        bool recording) {
    const bool open = !file.path.empty();
    for (const FileItem item : {printReport, exportRecords, exportGraph, printShownGraph})
        mnuFileItem(item).setEnabled(open);
    for (const ToolItem item : {findRecord, verifyFile})
        mnuToolItem(item).setEnabled(open);
    mnuViewItem(selectChannels).setEnabled(open && !recording);
    mnuViewItem(selectChannels)
        .setToolTip(recording ? "Not while records are written into this file"
                              : "What the graph shows");
    for (const auto& [index, item] : mnuUpdateItem)
        item->setEnabled(recording);
    mnuUpdateItem(automaticUpdate).setChecked(shown.autoUpdate);
}

void ReportMenus::ShowView(ViewItem view) {
    for (const ViewItem item : {graphView, tableView, recordsView})
        mnuViewItem(item).setChecked(view == item);
    for (const ViewItem item : {zoomIn, zoomOut, wholeSpan})
        mnuViewItem(item).setEnabled(view == graphView);
    for (const ToolItem item : {copyLines, selectAllLines})
        mnuToolItem(item).setEnabled(view != graphView);
}
