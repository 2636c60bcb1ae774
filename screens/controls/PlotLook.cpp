#include "screens/controls/PlotLook.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

void PlotLook::DressAxis(QCPAxis& axis, const QColor& text, const QFont& font) {
    axis.setBasePen(text);
    axis.setTickPen(text);
    axis.setSubTickPen(text);
    axis.setLabelColor(text);
    axis.setTickLabelColor(text);
    axis.setLabelFont(font);
    axis.setTickLabelFont(font);
}

void PlotLook::Dress(QCustomPlot& plot, const QPalette& palette, const QFont& font) {
    const QColor text = palette.color(QPalette::Text);
    QColor grid = text;
    grid.setAlpha(50);
    plot.setBackground(palette.color(QPalette::Base));
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        DressAxis(*axis, text, font);
        axis->grid()->setPen(QPen(grid, 0, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(grid, 0, Qt::SolidLine));
    }
    plot.legend->setBrush(Qt::NoBrush);
    plot.legend->setBorderPen(Qt::NoPen);
    plot.legend->setTextColor(text);
    plot.legend->setFont(font);
}

void PlotLook::DressTitle(QCPTextElement& title, const QPalette& palette, const QFont& font) {
    QFont bold = font;
    bold.setBold(true);
    title.setFont(bold);
    title.setTextColor(palette.color(QPalette::Text));
}

QCPTextElement* PlotLook::AddHead(QCustomPlot& plot) {
    constexpr int columnSpacing_px = 12;
    auto* title = new QCPTextElement(&plot);
    plot.plotLayout()->insertRow(0);
    plot.plotLayout()->addElement(0, 0, title);
    auto* row = new QCPLayoutGrid; // the plot's layout owns it
    plot.plotLayout()->insertRow(1);
    plot.plotLayout()->addElement(1, 0, row);
    plot.plotLayout()->setRowStretchFactor(1, 0.001);
    row->setMargins(QMargins(0, 0, 0, 0));
    row->addElement(0, 0, new QCPLayoutElement);
    row->addElement(0, 1, plot.legend);
    row->addElement(0, 2, new QCPLayoutElement);
    plot.legend->setFillOrder(QCPLegend::foColumnsFirst);
    plot.legend->setColumnSpacing(columnSpacing_px);
    plot.legend->setVisible(true);
    return title;
}

void PlotLook::FitHead(QCustomPlot& plot, int plotHeight_px) {
    constexpr int lowPlot_px = 140;
    const bool shown = plotHeight_px >= lowPlot_px;
    constexpr int usualTicks = 5;
    if (plot.yAxis->scaleType() == QCPAxis::stLinear) // decades are few by themselves
        plot.yAxis->ticker()->setTickCount(shown ? usualTicks : 2);
    for (const int row : {0, 1}) { // title and legend
        QCPLayoutElement& element = *plot.plotLayout()->element(row, 0);
        element.setVisible(shown);
        element.setMinimumSize(QSize(0, shown ? 0 : 1)); // 0: as its contents want it
        element.setMaximumSize(QSize(QWIDGETSIZE_MAX, shown ? QWIDGETSIZE_MAX : 1));
    }
}

QCPItemText* PlotLook::AddEmptyText(QCustomPlot& plot) {
    auto* text = new QCPItemText(&plot);
    text->position->setType(QCPItemPosition::ptAxisRectRatio);
    text->position->setCoords(0.5, 0.5);
    text->setVisible(false);
    return text;
}

void PlotLook::DressText(QCPItemText& text, const QPalette& palette, const QFont& font) {
    text.setColor(palette.color(QPalette::Text));
    text.setFont(font);
}

QCPRange PlotLook::WithSpace(double low, double high, double share) {
    constexpr double least = 1e-9;
    const double height = high - low;
    const double space = height > 0 ? height * share : std::max(std::abs(low) / 10, least);
    return {low - space, high + space};
}

QPalette PlotLook::Paper() {
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}
