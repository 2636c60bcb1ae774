#pragma once

#include "screens/Report/ReportMenus.h"

#include <QObject>

#include <cstdint>

class GraphPage;
class QTabBar;
class QWidget;
class RecordTableView;
class ReportLists;

/// The views of the viewer's file, one in front of the others: its graph, its lines in lists and
/// its records in a table. A record that is found or chosen is brought into all of them.
class ReportViews : public QObject {
    Q_OBJECT

public:
    enum View { graphTab, tableTab, recordsTab }; ///< of TabStrip

    struct Parts {
        QTabBar& tabs; ///< TabStrip
        QTabBar& pages;
        GraphPage& graph;
        QWidget& lines; ///< the lists with their tabs
        RecordTableView& records;
    };

    /// All must outlive the object. The tabs get their captions.
    ReportViews(const Mreport::ViewedFile& file, const Parts& parts, ReportLists& lists,
                ReportMenus& menus);

    /// Brings the view to the front; no handler of the tabs runs.
    void Show(View view);

    /// What an entry of the view menu says but for the selection of channels: a view, or how much
    /// of its span the graph draws.
    void Choose(ReportMenus::ViewItem item);

    /// The file has got lines, which the view in front shows.
    void FileGrown();

    /// The lines that are selected in the view in front.
    void CopySelection();
    void SelectAll();

    /// Brings the record that begins at this line of a list into every view.
    void BringRecord(const Mreport::LinePlace& place);

    /// The same with the record that begins at this offset, the file's `place`th from 0.
    void BringRecordAt(std::int64_t place, std::uint64_t offset);

private:
    void ChooseTab(View view);
    bool RecordsInFront() const;

    const Mreport::ViewedFile& file_;
    Parts parts_;
    ReportLists& lists_;
    ReportMenus& menus_;
};
