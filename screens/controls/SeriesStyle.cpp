#include "screens/controls/SeriesStyle.h"

#include <QIcon>
#include <QPixmap>
#include <qcustomplot.h>

#include <array>

namespace {

using Colours = std::array<QRgb, SeriesStyle::count>;
using Shape = QCPScatterStyle::ScatterShape;

constexpr Colours onLight = {0xFF3557DB, 0xFFD77F00, 0xFF235D5C, 0xFF000000,
                             0xFF5D96C7, 0xFFAA9167, 0xFF00135F, 0xFF593300};
constexpr Colours onDark = {0xFFADA3FE, 0xFFE27300, 0xFF55FF90, 0xFFD1FFFF,
                            0xFFA14E7E, 0xFFFFFF00, 0xFF7C4EF1, 0xFFA4503A};

constexpr std::array<Shape, SeriesStyle::count> marks = {
    QCPScatterStyle::ssDisc,    QCPScatterStyle::ssSquare, QCPScatterStyle::ssTriangle,
    QCPScatterStyle::ssDiamond, QCPScatterStyle::ssCross,  QCPScatterStyle::ssTriangleInverted,
    QCPScatterStyle::ssPlus,    QCPScatterStyle::ssStar};

bool IsFilled(Shape shape) {
    return shape != QCPScatterStyle::ssCross && shape != QCPScatterStyle::ssPlus &&
           shape != QCPScatterStyle::ssStar;
}

std::size_t Row(int series) {
    return static_cast<std::size_t>(series % SeriesStyle::count);
}

} // namespace

QColor SeriesStyle::Colour(int series, const QPalette& palette) {
    const bool dark = palette.color(QPalette::Base).lightnessF() < 0.5F;
    return QColor((dark ? onDark : onLight).at(Row(series)));
}

QCPScatterStyle SeriesStyle::Mark(int series, const QPalette& palette, double size_px) {
    constexpr double penWidth_px = 1.5;
    const QColor colour = Colour(series, palette);
    const Shape shape = marks.at(Row(series));
    QCPScatterStyle style(shape, colour, IsFilled(shape) ? colour : QColor(Qt::transparent),
                          size_px);
    style.setPen(QPen(colour, penWidth_px));
    return style;
}

QIcon SeriesStyle::Icon(int series, const QPalette& palette) {
    constexpr int side_px = 16;
    constexpr int sharpness = 3; // for scales up to 300 %
    QPixmap picture(side_px * sharpness, side_px * sharpness);
    picture.setDevicePixelRatio(sharpness);
    picture.fill(Qt::transparent);
    QCPPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Colour(series, palette), 2));
    painter.drawLine(QLineF(0, side_px / 2.0, side_px, side_px / 2.0));
    const QCPScatterStyle mark = Mark(series, palette);
    mark.applyTo(&painter, painter.pen());
    mark.drawShape(&painter, QPointF(side_px / 2.0, side_px / 2.0));
    return {picture};
}
