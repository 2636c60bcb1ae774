#include "screens/Report/HeaderBox.h"

#include <QFontDatabase>
#include <QScrollBar>

#include <cmath>

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
    setTabStopDistance(QFontMetrics(fixed).horizontalAdvance(widestColumn));
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &HeaderBox::FitLines);
    FitLines();
}

/// Where the form is small, the bar lies over the last line.
void HeaderBox::FitLines() {
    const double beside = 2 * (frameWidth() + document()->documentMargin());
    const int lines_px =
        QFontMetrics(font()).lineSpacing() * lines + static_cast<int>(std::ceil(beside));
    const bool bar = horizontalScrollBar()->maximum() > 0;
    setMinimumHeight(lines_px);
    setMaximumHeight(lines_px + (bar ? horizontalScrollBar()->sizeHint().height() : 0));
}
