#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class SimultCalib;
}

/// Calibration of several electrodes of the same kind in one vessel.
class SimultCalib : public QDialog {
    Q_OBJECT

public:
    explicit SimultCalib(QWidget* parent = nullptr);
    ~SimultCalib() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(int channel);

private:
    std::unique_ptr<Ui::SimultCalib> ui_;
};
