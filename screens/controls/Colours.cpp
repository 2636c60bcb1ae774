#include "screens/controls/Colours.h"

#include <QFont>
#include <QPalette>
#include <QWidget>

namespace Colours {

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

QColor Error(const QPalette& palette) {
    return IsDark(palette) ? QColor(255, 138, 128) : QColor(183, 28, 28);
}

QColor Good(const QPalette& palette) {
    return IsDark(palette) ? QColor(129, 199, 132) : QColor(27, 94, 32);
}

QColor Caution(const QPalette& palette) {
    return IsDark(palette) ? QColor(255, 183, 77) : QColor(150, 75, 0);
}

QColor Stale(const QPalette& palette) {
    return IsDark(palette) ? QColor(160, 160, 160) : QColor(110, 110, 110);
}

QColor Alarm() {
    return {183, 28, 28};
}

QColor BlinkOn(const QPalette& palette) {
    return IsDark(palette) ? Error(palette) : QColor(255, 0, 0);
}

QColor BlinkOff(const QPalette& palette) {
    return IsDark(palette) ? palette.color(QPalette::WindowText) : QColor(0, 0, 0);
}

namespace {
void Mark(QWidget& control, const QColor& colour, bool bold) {
    QPalette palette = control.palette();
    palette.setColor(QPalette::WindowText, colour);
    palette.setColor(QPalette::Text, colour);
    control.setPalette(palette);
    QFont font = control.font();
    font.setBold(bold);
    control.setFont(font);
}
} // namespace

void MarkError(QWidget& control, bool error) {
    const QPalette around = control.parentWidget()->palette();
    Mark(control, error ? Error(around) : around.color(QPalette::WindowText), error);
}

void MarkCaution(QWidget& control, bool caution) {
    const QPalette around = control.parentWidget()->palette();
    Mark(control, caution ? Caution(around) : around.color(QPalette::WindowText), caution);
}

} // namespace Colours
