#include "platform/qt/InputGate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform {

InputGate::InputGate() : modalAtStart_(QApplication::activeModalWidget()) {
    qApp->installEventFilter(this);
}

InputGate::~InputGate() {
    qApp->removeEventFilter(this);
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
