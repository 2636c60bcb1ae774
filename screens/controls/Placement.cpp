#include "screens/controls/Placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace {

/// What the desktop draws around the form; before it is shown, what a title bar usually takes.
QSize FrameOf(const QWidget& form) {
    if (form.isVisible())
        return form.frameGeometry().size() - form.geometry().size();
    return {0, form.style()->pixelMetric(QStyle::PM_TitleBarHeight)};
}

} // namespace

namespace Mcommon {

void CenterForm(QWidget& form) {
    const QRect area = form.screen()->availableGeometry();
    form.move(area.left() + (area.width() - form.width()) / 2,
              area.top() + (area.height() - form.height()) / 2);
}

void CenterControl(QWidget& control) {
    control.move((control.parentWidget()->width() - control.width()) / 2, control.y());
}

void SetTopMost(QWidget& form, bool topMost) {
    const QRect geometry = form.geometry();
    const bool shown = form.isVisible();
    form.setWindowFlag(Qt::WindowStaysOnTopHint, topMost);
    form.setGeometry(geometry);
    if (shown) // changing a window flag hides the window
        form.show();
}

void FitOntoScreen(QWidget& form) {
    form.resize(form.size().boundedTo(form.screen()->availableSize() - FrameOf(form)));
}

void MoveOntoScreen(QWidget& form, int left, int top) {
    const QScreen* screen = QGuiApplication::screenAt(QPoint(left, top));
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    const QSize size = form.frameGeometry().size();
    const int rightmost = std::max(area.left(), area.right() - size.width());
    const int lowest = std::max(area.top(), area.bottom() - size.height());
    form.move(std::clamp(left, area.left(), rightmost), std::clamp(top, area.top(), lowest));
}

void KeepOnScreen(QWidget& form) {
    const QRect frame = form.frameGeometry();
    if (!form.screen()->availableGeometry().contains(frame))
        MoveOntoScreen(form, frame.left(), frame.top());
}

} // namespace Mcommon
