#pragma once

#include "report/Seal.h"
#include "report/Verify.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class frmVerify;
}

/// Verifies the viewed file while events go on, then tells the verdict, lists what diverged, and
/// holds the file against the seal beside it where there is one, and against what the history took
/// of it. Saves a seal.
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
    bool Work();
    void FinishVerification();
    void FinishSealing();
    /// What the file is held against, and where the outcome is shown.
    struct HeldAgainst {
        std::unique_ptr<Mreport::SealCheck> check;
        QLabel& label;
        QString caption;
    };

    void LookForSeals();
    void Hold(const std::function<std::optional<Mreport::Seal>()>& find, QLabel& label,
              const QString& caption);
    void WorkOnCheck();
    void cmdSeal_Click();
    void ShowSeal(const QString& text);
    bool Working() const { return verification_ || !checks_.empty() || sealing_; }
    void cmdClose_Click();
    void tblDiverged_Click(int row);
    void ShowProgress();
    void ShowVerdict(const Mreport::VerifyResult& result, const QString& before);
    void ShowReasons(const Mreport::VerifyResult& result);
    void ShowList();

    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmVerify> ui_;
    QTimer tmrVerify_;
    const Mreport::ViewedFile& file_;
    // What is at work; one after the other.
    std::unique_ptr<Mreport::Verification> verification_;
    std::deque<HeldAgainst> checks_;
    std::unique_ptr<Mreport::Sealing> sealing_;
    std::filesystem::path sealFile_; ///< that is being made
    std::vector<Mreport::Divergence> listed_;
};
