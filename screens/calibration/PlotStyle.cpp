#include "screens/calibration/PlotStyle.h"

#include "screens/controls/Colours.h"
#include "screens/controls/PlotLook.h"

#include <qcustomplot.h>

PlotStyle PlotStyle::For(const QPalette& palette) {
    if (Colours::IsDark(palette))
        return {QColor(70, 70, 70), QColor(190, 190, 190), QColor(105, 105, 105),
                QColor(100, 181, 246), QColor(255, 183, 77)};
    return {QColor(214, 214, 214), Qt::white, QColor(190, 190, 190), QColor(13, 71, 161),
            QColor(191, 54, 12)};
}

void PlotStyle::Dress(QCustomPlot& plot) const {
    const QColor text = plot.palette().color(QPalette::WindowText);
    plot.setBackground(plot.palette().color(QPalette::Window));
    plot.axisRect()->setBackground(area);
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis, plot.xAxis2, plot.yAxis2}) {
        PlotLook::DressAxis(*axis, text, plot.font());
        axis->grid()->setPen(QPen(grid, 1));
        axis->grid()->setSubGridPen(QPen(subGrid, 1, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(grid, 2));
    }
}
