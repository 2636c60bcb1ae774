#pragma once

#include <QColor>

class QCPScatterStyle;
class QIcon;
class QPalette;

/// Colours and marks of the graphs' series: a channel has the same ones everywhere. Any two colours
/// stay at least 35 CIELAB units apart for normal sight and for people who do not see red or green,
/// and all stand out from their background at 3:1 or better; the marks tell them apart besides.
namespace SeriesStyle {

inline constexpr int count = 8;
inline constexpr double markSize_px = 7;

/// Colour of a series (from 0) on a background as the palette's base colour.
QColor Colour(int series, const QPalette& palette);

/// The mark of a series, in its colour.
QCPScatterStyle Mark(int series, const QPalette& palette, double size_px = markSize_px);

/// The mark on a piece of line, as a legend shows it.
QIcon Icon(int series, const QPalette& palette);

} // namespace SeriesStyle
