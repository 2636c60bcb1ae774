#include "screens/frmSplash/SplashArtwork.h"

#include <QLinearGradient>
#include <QPainter>

#include <array>

void SplashArtwork::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = rect();

    QLinearGradient band(area.topLeft(), area.bottomRight());
    band.setColorAt(0, QColor(13, 59, 102));
    band.setColorAt(1, QColor(0, 121, 140));
    painter.fillRect(area, band);

    painter.setPen(QPen(QColor(255, 255, 255, 36), 1));
    constexpr int gridStep = 26;
    for (int x = gridStep; x < width(); x += gridStep)
        painter.drawLine(x, 0, x, height());
    for (int y = gridStep; y < height(); y += gridStep)
        painter.drawLine(0, y, width(), y);

    // Standards as fractions of the panel, from the lowest to the highest concentration.
    constexpr std::array<QPointF, 4> standards = {QPointF(0.12, 0.90), QPointF(0.37, 0.80),
                                                  QPointF(0.62, 0.70), QPointF(0.87, 0.60)};
    const auto place = [&](QPointF fraction) {
        return QPointF(fraction.x() * area.width(), fraction.y() * area.height());
    };
    painter.setPen(QPen(QColor(255, 209, 102), 2.5));
    painter.drawLine(place(standards.front()), place(standards.back()));
    painter.setBrush(Qt::white);
    for (const QPointF standard : standards)
        painter.drawEllipse(place(standard), 5, 5);
}
