#pragma once

#include <qcustomplot.h>

#include <vector>

/// Ticks of an axis that shows decimal logarithms: at each decade, and where the range holds fewer
/// than two of them at 1, 2 and 5 of each as well. Range and ticks are logarithms.
std::vector<double> DecadeTicks(double lower, double upper);

/// Labels such an axis with the numbers themselves: 1, 10, 100 instead of 0, 1, 2.
class DecadeTicker : public QCPAxisTicker {
protected:
    QVector<double> createTickVector(double tickStep, const QCPRange& range) override;
    QVector<double> createSubTickVector(int subTickCount, const QVector<double>& ticks) override;
    int getSubTickCount(double tickStep) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar,
                         int precision) override;
};
