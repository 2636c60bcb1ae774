#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmCalib;
}

/// Calibration of the electrode of one channel.
class frmCalib : public QDialog {
    Q_OBJECT

public:
    explicit frmCalib(QWidget* parent = nullptr);
    ~frmCalib() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(int channel);

private:
    std::unique_ptr<Ui::frmCalib> ui_;
};
