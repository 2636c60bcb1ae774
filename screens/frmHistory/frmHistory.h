#pragma once

#include "history/ChainCheck.h"
#include "history/Selection.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QSpinBox>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class frmHistory;
}

/// The history to look at: the calibrations of an electrode as a table and over time, and the
/// events of some days, filtered and searched; both to be saved as CSV. Walks the chain of all
/// entries while events run, and says whether they are as they were written.
class frmHistory : public QDialog {
    Q_OBJECT

public:
    /// The log must outlive the form.
    explicit frmHistory(History::Log& log, QWidget* parent = nullptr);
    ~frmHistory() override;

    /// Shows the calibrations of this electrode, also where there are none.
    void ShowElectrode(const History::KnownElectrode& electrode);

Q_SIGNALS:
    /// The limits for the age of calibrations have been changed.
    void AgesChanged();

private:
    /// Elements of txtAge.
    enum Age { pH, ion, redox };

    void WireControls();
    void Form_Load();
    void FillLists();
    void cboElectrode_Click();
    void ShowEvents();
    void tmrChain_Timer();
    void cmdCsv_Click();
    void cmdHelp_Click();
    void txtAge_Change(std::size_t Index);
    void ShowAges();
    void ShowCalibrations();
    History::Wish WishNow() const;

    History::Log& log_;
    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmHistory> ui_;
    ControlArray<QSpinBox> txtAge;
    QTimer tmrChain_;
    std::optional<History::ChainCheck> chain_;
    std::vector<History::KnownElectrode> electrodes_; ///< as the list has them
    std::vector<History::PastCalibration> calibrations_;
    std::vector<History::NumberedEntry> events_; ///< as the table has them
};
