#pragma once

#include "report/RunSearch.h"
#include "report/ViewedFile.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QRadioButton>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class RunSearchPane;
}

/// What a record is searched by: its number, which the form itself looks for, or a text in its
/// comment, its time, a value above or below a limit. The search through the file runs in slices
/// while events go on, and can be stopped.
class RunSearchPane : public QWidget {
    Q_OBJECT

public:
    enum SearchBy { byNumber, byComment, byTime, byValue }; ///< of optSearch; the pages of
    ///< stkWish follow behind the number

    /// The file must outlive the pane.
    explicit RunSearchPane(const Mreport::ViewedFile& file, QWidget* parent = nullptr);
    ~RunSearchPane() override;

    bool ByNumber() const;

    /// Searches for the next record that pleases, from the last one found on.
    void FindNext();

    /// Ends a search that runs; nothing of the file is looked at any more.
    void Stop();

    /// Another file is shown: the next search starts at its beginning.
    void Forget();

    bool IsSearching() const { return search_ != nullptr; }

Q_SIGNALS:
    void ByNumberChanged(bool byNumber);
    void Searching();
    void Found(const Mreport::LinePlace& place);
    void NotFound();
    void Stopped();
    /// What was entered cannot be searched for.
    void Refused(const QString& reason);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void optSearch_Click(std::size_t Index);
    void cboSeries_Click(int Index);
    void WishChanged();
    void tmrSearch_Timer();
    void FillSeries();
    void FillQuantities();
    std::optional<Mreport::RunSearchWish> Wish();
    std::optional<Mreport::RunSearchWish> ValueWish();
    std::size_t By() const;

    EventGuard guard_{"Unexpected error - "};
    const Mreport::ViewedFile& file_;
    std::unique_ptr<Ui::RunSearchPane> ui_;
    ControlArray<QRadioButton> optSearch;
    QTimer tmrSearch_;
    std::unique_ptr<Mreport::RunSearch> search_; ///< while it runs
    std::optional<std::int64_t> last_;           ///< place of the record found last
};
