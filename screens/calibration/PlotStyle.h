#pragma once

#include <QColor>

class QCustomPlot;
class QPalette;

/// How the plots of the calibration screens look, on the light and the dark palette.
struct PlotStyle {
    static constexpr double lineWidth = 2;
    static constexpr double marginOfRange = 0.1; ///< of the range of the points, on either side

    QColor area, grid, subGrid, line, mark;

    static PlotStyle For(const QPalette& palette);

    /// Gives the plot its background, grid, axes and font.
    void Dress(QCustomPlot& plot) const;
};
