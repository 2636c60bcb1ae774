#pragma once

#include "chem/CalibrationCurve.h"

#include <qcustomplot.h>

/// The points of a calibration and the line through them, mV over pH or over the logarithm of
/// concentration, on a grid in white and grey.
class CalibrationPlot : public QCustomPlot {
    Q_OBJECT

public:
    explicit CalibrationPlot(QWidget* parent = nullptr);

    void ShowCurve(const CalibrationCurve& curve);

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeColours();
    void FitAxes();

    QCPCurve* line_; ///< points stay in the order recorded, which need not be that of x
};
