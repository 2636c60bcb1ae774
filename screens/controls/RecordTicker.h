#pragma once

#include <qcustomplot.h>

#include <vector>

/// Ticks of the record axis: the labelled points, as many of them as have room, and small ticks at
/// the others.
class RecordTicker : public QCPAxisTicker {
public:
    std::vector<QString> labels; ///< of point 1, 2 ...; empty for a point without label

    /// How many labels fit side by side on the axis.
    void SetRoom(int labelCount) { room_ = labelCount; }

protected:
    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                  QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override;

private:
    std::vector<int> LabelledPoints(const QCPRange& range) const;

    int room_ = 10;
};
