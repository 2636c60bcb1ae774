#pragma once

#include "base/Quantity.h"
#include "chem/CheckStandard.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class frmCheck;
}

/// Holds a channel's steady reading against the known value of a standard: recovery, and whether it
/// lies within the bounds, which are remembered. The outcome goes into the history.
class frmCheck : public QDialog {
    Q_OBJECT

public:
    /// What a channel shows at a moment.
    struct Reading {
        Quantity quantity = Quantity::mV;
        std::optional<float> value; ///< nothing while none is read
        bool steady = false;
    };
    using Read = std::function<Reading(int channel)>;

    /// Of these channels (0-based); `read` must live as long as the form.
    frmCheck(const std::vector<int>& channels, Read read, QWidget* parent = nullptr);
    ~frmCheck() override;

private:
    void tmrCheck_Timer();
    void cboChannel_Click();
    void cmdTake_Click();
    void ShowReading();
    void Take(const Reading& reading, float standard, const CheckStandard::Bounds& bounds);
    int Channel() const;
    std::optional<CheckStandard::Bounds> BoundsNow() const;

    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmCheck> ui_;
    QTimer tmrCheck_;
    Read read_;
};
