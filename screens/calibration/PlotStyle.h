#pragma once

#include <QColor>

class QCustomPlot;
class QPalette;

/// How the plots of the calibration screens look, on the light and the dark palette.
struct PlotStyle {
    QColor area, grid, subGrid, line, mark;

    static PlotStyle For(const QPalette& palette);

    /// Gives the plot its background, grid, axes and font.
    void Dress(QCustomPlot& plot) const;
};
