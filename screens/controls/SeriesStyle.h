#pragma once

#include <QColor>

class QPalette;

/// Colours of the graph's series. Any two of them stay at least 35 CIELAB units apart for normal
/// sight and for people who do not see red or green, and all stand out from their background at
/// 3:1 or better; each series has a mark of its own besides (GraphControl).
namespace SeriesStyle {

inline constexpr int count = 8;

/// Colour of a series (from 0) on a background as the palette's base colour.
QColor Colour(int series, const QPalette& palette);

} // namespace SeriesStyle
