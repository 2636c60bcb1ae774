#include "platform/qt/InputGate.h"

#include "platform/Platform.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform {

InputGate::InputGate()
    : pointerBefore_(Current().desktop.GetMousePointer()),
      modalAtStart_(QApplication::activeModalWidget()) {
    Current().desktop.SetMousePointer(MousePointer::hourglass);
    qApp->installEventFilter(this);
}

InputGate::~InputGate() {
    qApp->removeEventFilter(this);
    Current().desktop.SetMousePointer(pointerBefore_);
}

bool InputGate::eventFilter(QObject*, QEvent* event) {
    if (QApplication::activeModalWidget() != modalAtStart_)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            stopRequested_ = true;
        return true;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace platform
