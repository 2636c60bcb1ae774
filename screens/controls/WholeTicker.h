#pragma once

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

/// A ticker of the plot whose ticks stand at whole numbers alone: there is nothing between two
/// records, nor between two seconds of their times.
template <class Ticker>
class WholeTicker : public Ticker {
protected:
    double getTickStep(const QCPRange& range) override {
        return std::max(Ticker::getTickStep(range), 1.0);
    }

    int getSubTickCount(double tickStep) override {
        const int count = Ticker::getSubTickCount(tickStep);
        return std::fmod(tickStep, count + 1) == 0 ? count : 0;
    }
};
