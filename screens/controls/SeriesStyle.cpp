#include "screens/controls/SeriesStyle.h"

#include <QPalette>

#include <array>

namespace {

using Colours = std::array<QRgb, SeriesStyle::count>;

constexpr Colours onLight = {0xFF3557DB, 0xFFD77F00, 0xFF235D5C, 0xFF000000,
                             0xFF5D96C7, 0xFFAA9167, 0xFF00135F, 0xFF593300};
constexpr Colours onDark = {0xFFADA3FE, 0xFFE27300, 0xFF55FF90, 0xFFD1FFFF,
                            0xFFA14E7E, 0xFFFFFF00, 0xFF7C4EF1, 0xFFA4503A};

} // namespace

QColor SeriesStyle::Colour(int series, const QPalette& palette) {
    const bool dark = palette.color(QPalette::Base).lightnessF() < 0.5F;
    return QColor((dark ? onDark : onLight).at(static_cast<std::size_t>(series % count)));
}
