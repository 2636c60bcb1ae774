#pragma once

#include <qcustomplot.h>

/// Ticks of a time axis in seconds of the day, which may begin before midnight and end after it:
/// whole 5, 10, 15 or 30 seconds, 1, 2, 5, 10, 15 or 30 minutes, with the time of day beside them.
class TimeTicker : public QCPAxisTicker {
public:
    /// How many labels fit side by side on the axis.
    void SetRoom(int labelCount) { room_ = labelCount; }

    /// The shortest whole step, in seconds, that needs at most `room` labels.
    static double Step(double range_s, int room);

    /// "14:54", and the seconds where the step has them: "14:54:30".
    static QString Label(double second, double step_s);

protected:
    double getTickStep(const QCPRange& range) override;
    int getSubTickCount(double step_s) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

private:
    int room_ = 8;
    double step_s_ = 60;
};
