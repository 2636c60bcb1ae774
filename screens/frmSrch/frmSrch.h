#pragma once

#include "report/RecordSearch.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmSrch;
}
class RunSearchPane;

/// Search of one record: by its number in the viewer's list pages, or by what it holds.
class frmSrch : public QDialog {
    Q_OBJECT

public:
    /// The file must outlive the form.
    explicit frmSrch(const Mreport::ViewedFile& file, QWidget* parent = nullptr);
    ~frmSrch() override;

    /// Another file is shown: what was found in the one before does not hold any more.
    void Forget();

    /// The file is about to be closed: a search that runs ends.
    void StopSearch();

    /// The next record that pleases; by number, the record of the number again.
    void FindNext();

Q_SIGNALS:
    /// Where the record that was found begins.
    void RecordFound(const Mreport::LinePlace& place);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void txtEntry_Change();
    void txtEntry_KeyPress();
    void cboChan_Click();
    void cboUnit_Click();
    void cmdClose_Click();
    void SearchRecord();
    void ShowFound();
    void ShowNotFound();
    void FillChannels();
    void FillUnits();
    void ShowFoundValue();
    void ShowStatus(const QString& text);
    void AllowChoice(bool allowed);
    void MakeSearchPane(const Mreport::ViewedFile& file);
    void ShowEntry(bool byNumber);
    void ShowFoundAt(const Mreport::LinePlace& place);

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::frmSrch> ui_;
    Mreport::RecordSearch search_;
    RunSearchPane* pane_ = nullptr;
};
