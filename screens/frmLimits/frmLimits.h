#pragma once

#include "chem/LimitWatch.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <memory>
#include <optional>

namespace Ui {
class frmLimits;
}

/// The limits between which an analyst wants the readings of each channel to stay. Shows the stored
/// ones, and stores what is accepted.
class frmLimits : public QDialog {
    Q_OBJECT

public:
    enum Button { accept_, cancel };

    explicit frmLimits(QWidget* parent = nullptr);
    ~frmLimits() override;

    /// What is stored now.
    const ChannelLimits& Accepted() const { return limits_; }

private:
    void ShowChannel(std::size_t channel);
    void cmdBtn_Click(std::size_t Index);
    void AcceptLimits();
    std::optional<Limits> LimitsOf(std::size_t channel);
    bool ReadEnd(QLineEdit& box, std::size_t channel, std::optional<float>& end);
    void Refuse(QLineEdit& box, std::size_t channel, const std::string& reason);

    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::frmLimits> ui_;
    ControlArray<QLabel> lblLimit;
    ControlArray<QLineEdit> txtLow;
    ControlArray<QLineEdit> txtHigh;
    ControlArray<QComboBox> cboLimit;
    ControlArray<QPushButton> cmdBtn;
    ChannelLimits limits_;
};
