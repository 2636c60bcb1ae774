#include "screens/controls/PaperSheet.h"

#include <QPicture>
#include <qcustomplot.h>

#include <algorithm>

namespace {
constexpr int height_px = 560;
constexpr int font_px = 13;
} // namespace

PaperSheet::PaperSheet(const QRectF& place)
    : place_(place),
      size_(qRound(height_px * place.width() / std::max(place.height(), 1.0)), height_px) {}

QFont PaperSheet::Font(const QFont& screen) const {
    QFont font = screen;
    font.setPixelSize(font_px);
    font.setHintingPreference(QFont::PreferNoHinting); // that of the screen spaces letters unevenly
    return font;
}

void PaperSheet::Paint(QCustomPlot& plot, QPainter& painter) const {
    QPicture picture;
    {
        QCPPainter plotPainter(&picture);
        plotPainter.setMode(QCPPainter::pmVectorized);
        plotPainter.setMode(QCPPainter::pmNoCaching);
        plot.toPainter(&plotPainter, size_.width(), size_.height());
    }
    painter.save();
    painter.translate(place_.topLeft());
    // Playing enlarges a picture by the resolution of its device; the place says all of it.
    const double enlarged = 1.0 * painter.device()->logicalDpiX() / picture.logicalDpiX();
    painter.scale(place_.width() / size_.width() / enlarged,
                  place_.height() / size_.height() / enlarged);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.play(&painter);
    painter.restore();
}
