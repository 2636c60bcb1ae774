#pragma once

#include <qcustomplot.h>

#include <vector>

/// Ticks of the record axis: the labelled points, as many of them as have room, and small ticks at
/// the others.
class RecordTicker : public QCPAxisTicker {
public:
    /// Of point 1, 2 ...; empty for a point without label.
    void SetLabel(int point, const QString& text);
    void Clear() { labels_.clear(); }

    /// How many labels fit side by side on the axis.
    void SetRoom(int labelCount) { room_ = labelCount; }

protected:
    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                  QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override;

private:
    std::vector<int> LabelledPoints(const QCPRange& range) const;

    std::vector<QString> labels_;
    int room_ = 10;
};
