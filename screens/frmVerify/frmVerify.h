#pragma once

#include "report/Verify.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmVerify;
}

/// Verifies the viewed file while events go on, then tells the verdict and lists what diverged.
/// The file must stay the same while the form stands.
class frmVerify : public QDialog {
    Q_OBJECT

public:
    explicit frmVerify(const Mreport::ViewedFile& file, QWidget* parent = nullptr);
    ~frmVerify() override;

    /// Ends a verification that runs; what it has found so far is shown.
    void Stop();

    /// ESC ends a verification that runs, and else closes the form.
    void reject() override;

Q_SIGNALS:
    /// A value of the list has been chosen: its record's place in the run and its offset in the
    /// file.
    void RecordWanted(std::int64_t place, std::uint64_t offset);

private:
    void tmrVerify_Timer();
    void cmdClose_Click();
    void tblDiverged_Click(int row);
    void ShowProgress();
    void ShowVerdict(const Mreport::VerifyResult& result, const QString& before);
    void ShowReasons(const Mreport::VerifyResult& result);
    void ShowList();

    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmVerify> ui_;
    QTimer tmrVerify_;
    std::unique_ptr<Mreport::Verification> verification_; ///< while it runs
    std::vector<Mreport::Divergence> listed_;
};
