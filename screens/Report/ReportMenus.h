#pragma once

#include "report/ShownGraph.h"
#include "screens/controls/ControlArray.h"

#include <QAction>

/// The viewer's menus: which entries there are and what they offer of the shown file.
class ReportMenus {
public:
    enum FileItem {
        openFile,
        printReport,
        exportRecords,
        exportGraph,
        closeReport,
        openInNewWindow,
        printShownGraph
    };
    enum ViewItem { selectChannels, graphView, tableView, zoomIn, zoomOut, wholeSpan, recordsView };
    enum ToolItem { calculator, notepad, findRecord, copyLines, selectAllLines, verifyFile };
    enum UpdateItem { updateList, automaticUpdate };

    /// Gathers the menus of the form.
    explicit ReportMenus(const QWidget& form);

    /// Enables what the file allows; `recording` while records may be written into it.
    void Allow(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown, bool recording);

    /// Checks the entry of the view in front and enables what belongs to it.
    void ShowView(ViewItem view);

    ControlArray<QAction> mnuFileItem;
    ControlArray<QAction> mnuViewItem;
    ControlArray<QAction> mnuToolItem;
    ControlArray<QAction> mnuUpdateItem;
};
