#include "screens/Report/HeaderBox.h"

#include <QFontDatabase>
#include <QScrollBar>

namespace {
constexpr const char* widestColumn = "+1.33E+13";
constexpr int margin_px = 4;
} // namespace

HeaderBox::HeaderBox(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setFont(fixed);
    // A margin of the document's own would show a part of the next line.
    document()->setDocumentMargin(0);
    setViewportMargins(margin_px, margin_px, margin_px, margin_px);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setTabStopDistance(QFontMetrics(fixed).horizontalAdvance(widestColumn));
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &HeaderBox::FitLines);
    FitLines();
}

void HeaderBox::ShowLines(int lines) {
    if (lines == lines_)
        return;
    lines_ = lines;
    FitLines();
}

/// Where the form is small, the bar lies over the last line.
void HeaderBox::FitLines() {
    const int lines_px =
        QFontMetrics(font()).lineSpacing() * lines_ + 2 * (frameWidth() + margin_px);
    const bool bar = horizontalScrollBar()->maximum() > 0;
    setMinimumHeight(lines_px);
    setMaximumHeight(lines_px + (bar ? horizontalScrollBar()->sizeHint().height() : 0));
}
