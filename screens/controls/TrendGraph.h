#pragma once

#include "base/LocalTime.h"
#include "chem/TrendHistory.h"
#include "screens/controls/TimeTicker.h"

#include <qcustomplot.h>

#include <array>
#include <chrono>

/// The lines of the last minutes, one for each channel that has the quantity, in the channel's
/// colour, above the time of day.
class TrendGraph : public QCustomPlot {
    Q_OBJECT

public:
    explicit TrendGraph(QWidget* parent = nullptr);

    /// What is drawn, at a moment of both clocks.
    struct View {
        Quantity quantity = Quantity::mV;
        std::chrono::minutes span{10};
        std::chrono::milliseconds monotonic{0};
        LocalTime now;
    };
    void ShowTrend(const TrendHistory& history, const View& view);

    /// Any height will do: the page decides when it is too low to be of use.
    QSize minimumSizeHint() const override { return {0, 0}; }
    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeLegend();
    void ShowLine(std::size_t channel, const TrendHistory& history, const View& view);
    void FitValues(Quantity quantity);
    void FitLabels();
    void TakeColours();

    QSharedPointer<TimeTicker> ticker_;
    std::array<QCPGraph*, maxChannels> lines_{};
};
