#include "screens/Report/HeaderBox.h"

#include <QFontDatabase>
#include <QScrollBar>

namespace {
constexpr auto widestColumn = "+1.33E+13";
constexpr int lines = 4;
} // namespace

HeaderBox::HeaderBox(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setFont(fixed);
    const QFontMetrics metrics(fixed);
    const double beside = 2 * (frameWidth() + document()->documentMargin());
    const int lines_px = metrics.lineSpacing() * lines + static_cast<int>(beside);
    setMinimumHeight(lines_px); // where the form is small, the bar lies over the last line
    setMaximumHeight(lines_px + horizontalScrollBar()->sizeHint().height());
    setTabStopDistance(metrics.horizontalAdvance(widestColumn));
}
