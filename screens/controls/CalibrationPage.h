#pragma once

#include "chem/CalibrationRecord.h"

#include <QWidget>

#include <string>

class CalibrationPlot;
class QLabel;
class QTableWidget;

/// The calibration summary: the plot of the points and the "Slopes" list with what there is to say
/// about them.
class CalibrationPage : public QWidget {
    Q_OBJECT

public:
    explicit CalibrationPage(QWidget* parent = nullptr);

    /// `usable` false shows that the data is bad, in place of the slopes.
    void ShowCalibration(const CalibrationRecord& record, const std::string& electrode,
                         bool usable);

private:
    void BuildSlopes();
    void ShowSlopes(const CalibrationRecord& record, const std::string& electrode);

    CalibrationPlot* plot_;
    QLabel* lblSlopes_;
    QTableWidget* lstSlopes_;
    QLabel* lblRemark_;
    QLabel* lblIncorrect_;
};
