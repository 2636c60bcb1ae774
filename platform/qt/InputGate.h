#pragma once

#include "platform/Desktop.h"

#include <QObject>
#include <QPointer>

class QWidget;

namespace platform {

/// While it lives, clicks and keys wait outside, so that a long drawing may let events run without
/// its own screens being closed or clicked meanwhile, and the pointer is the hourglass; ESC asks to
/// stop. A box that opens in the meantime, over everything else, is answered as usual.
class InputGate : public QObject {
public:
    InputGate();
    ~InputGate() override;

    bool StopRequested() const { return stopRequested_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MousePointer pointerBefore_;
    QPointer<QWidget> modalAtStart_;
    bool stopRequested_ = false;
};

} // namespace platform
