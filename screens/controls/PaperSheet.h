#pragma once

#include <QFont>
#include <QRectF>
#include <QSize>

class QCustomPlot;
class QPainter;

/// The sheet that a plot is laid out on for paper: of a fixed height in plot pixels, scaled to its
/// place on the paper. Fonts in pixels scale with it on every device.
class PaperSheet {
public:
    explicit PaperSheet(const QRectF& place);

    int Width_px() const { return size_.width(); }
    int Height_px() const { return size_.height(); }
    QFont Font(const QFont& screen) const;

    /// Lays the plot out, dressed for the paper by the caller, and draws it.
    void Paint(QCustomPlot& plot, QPainter& painter) const;

private:
    QRectF place_;
    QSize size_;
};
