#pragma once

#include "base/Channels.h"
#include "screens/calibration/PointReading.h"

#include <qcustomplot.h>

#include <array>
#include <vector>

/// How the readings of a calibration point run since "&Read": mV over the time, a line for each
/// channel in the channel's colour.
class ReadingTrend : public QCustomPlot {
    Q_OBJECT

public:
    static constexpr int least_px = 110; ///< of its height; smaller, it tells nothing

    explicit ReadingTrend(QWidget* parent = nullptr);

    /// Shows the readings of these channels (0-based).
    void ShowTrace(const PointReading::Trace& trace, const std::vector<std::size_t>& channels);

protected:
    void changeEvent(QEvent* event) override;

private:
    void FitAxes(const PointReading::Trace& trace);
    void TakeColours();
    void Describe(const PointReading::Trace& trace, const std::vector<std::size_t>& channels);

    std::array<QCPGraph*, maxChannels> lines_{};
};
