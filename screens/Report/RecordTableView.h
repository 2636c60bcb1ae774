#pragma once

#include "screens/Report/RecordTableModel.h"
#include "screens/controls/EventGuard.h"

#include <QTableView>

/// The compact table of the viewer: one row a record. Columns are chosen in the menu of heading and
/// table. What is selected is copied with its heading; a table that is scrolled to its end follows
/// a growing file.
class RecordTableView : public QTableView {
    Q_OBJECT

public:
    explicit RecordTableView(QWidget* parent = nullptr);

    /// The file must outlive the table.
    void Attach(const Mreport::ViewedFile& file);

    /// The table comes to the front: the file as it is now, at the row it stood at.
    void ShowFile();
    void FileGrown();
    /// The file is gone.
    void Forget();

    /// Selects the row of a record that begins at this line of a list.
    void SelectRecord(const Mreport::LinePlace& place);

    void CopySelection();

Q_SIGNALS:
    /// A row was activated; its record begins at this line of a list.
    void RecordChosen(const Mreport::LinePlace& place);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void FitRows();
    void FitColumns();
    void FitColumn(int place, const Mreport::RecordTable::Column& column);
    void ShowColumns();
    void ShowColumnMenu(const QPoint& place);
    void Header_Menu(const QPoint& place);
    void Row_Activated(const QModelIndex& index);
    std::vector<std::size_t> ShownColumns() const;

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<RecordTableModel> model_;
    bool shown_ = false;
    std::optional<Mreport::LinePlace> wanted_; ///< selected once the table is shown
};
