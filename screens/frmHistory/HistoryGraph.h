#pragma once

#include "history/CalibrationEntry.h"

#include <qcustomplot.h>

#include <vector>

/// The calibrations of one electrode over time: slope in percent of theory, between the bounds of a
/// sound electrode, and offset in mV on an axis of its own.
class HistoryGraph : public QCustomPlot {
    Q_OBJECT

public:
    explicit HistoryGraph(QWidget* parent = nullptr);

    /// `whyNone` stands in the graph where there are no calibrations.
    void ShowCalibrations(const std::vector<History::PastCalibration>& calibrations,
                          const QString& whyNone);

    /// What stands in place of the values; empty where there are any.
    QString EmptyText() const;

    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void MakeBound(double percent);
    void TakeColours();
    void FitAxes();
    void ShowEmpty(const QString& why);
    void DressEmptyText();

    QCPTextElement* title_;
    QCPGraph* slope_;
    QCPGraph* offset_;
    std::vector<QCPItemStraightLine*> bounds_;
    QCPItemText* emptyText_ = nullptr; ///< where there are no values
};
