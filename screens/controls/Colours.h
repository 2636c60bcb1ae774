#pragma once

#include <QColor>

class QPalette;
class QWidget;

/// Colours with a meaning, readable on the light and the dark palette alike.
namespace Colours {

bool IsDark(const QPalette& palette);

QColor Error(const QPalette& palette);
QColor Good(const QPalette& palette);
QColor Caution(const QPalette& palette); ///< amber: to be looked at, not wrong
QColor Stale(const QPalette& palette);   ///< grey: of an earlier moment
QColor Alarm();                          ///< a background, for white text

/// The two colours of a title that blinks: red and black, on a dark palette light red and the
/// palette's text.
QColor BlinkOn(const QPalette& palette);
QColor BlinkOff(const QPalette& palette);

/// Shows a control's text in the error colour and bold, or as the palette has it; never by colour
/// alone.
void MarkError(QWidget& control, bool error);
void MarkCaution(QWidget& control, bool caution);

} // namespace Colours
