#pragma once

#include "platform/Printer.h"
#include "report/PrintLayout.h"
#include "report/PrintRange.h"
#include "report/ShownGraph.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace Ui {
class frmPrint;
}

/// Prints records of a list page as a table or as the viewer's graph.
class frmPrint : public QDialog {
    Q_OBJECT

public:
    enum PrintOption { asTable, asGraph };        ///< of optPrintOpt
    enum RangeOption { allRecords, someRecords }; ///< of optRange
    enum RangeBox { firstBox, lastBox };          ///< of txtRange and lblRange

    /// Starts with the list that the viewer shows. Both must outlive the form.
    frmPrint(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown,
             QWidget* parent = nullptr);
    ~frmPrint() override;

private:
    void Form_Load();
    void cboList_Click();
    void optPrintOpt_Click(std::size_t Index);
    void chkCompact_Click();
    void AllowChoices();
    std::array<std::pair<const char*, QCheckBox*>, 3> RememberedBoxes() const;
    void RememberChoices();
    void cmdPrint_Click();
    void cmdClose_Click();
    void txtRange_Change(std::size_t Index);

    int ChosenPage() const;
    /// The range to print; nothing after it was refused.
    std::optional<Mreport::RecordRange> ChosenRange();
    void Refuse(std::string_view message, std::size_t box);
    platform::PrintOutcome PrintTable(Mreport::RecordRange range);
    platform::PrintOutcome PrintGraph(Mreport::RecordRange range);
    void ShowBusy(const QString& busy, const QString& status);
    void ShowProgress(const Mreport::TableProgress& progress);

    const Mreport::ViewedFile& file_;
    const Mreport::ShownGraph& shown_;
    std::unique_ptr<Ui::frmPrint> ui_;
    EventGuard guard_{"Unexpected error - "};
    ControlArray<QRadioButton> optPrintOpt;
    ControlArray<QRadioButton> optRange;
    ControlArray<QLineEdit> txtRange;
    ControlArray<QLabel> lblRange;
    /// Of the chosen list, as lblRange shows it; a live file grows on.
    Mreport::RecordRange listed_;
    int shownPercent_ = -1;
};
