#include "platform/qt/SystemSerialControl.h"

#include "platform/WaitingSerialControl.h"

#include <QWinEventNotifier>

#include <utility>

namespace platform {

std::shared_ptr<SerialControl> MakeSerialControl(QObject& /*owner*/, EventRunner guard) {
    auto control = MakeWaitingSerialControl();
    auto notifier = std::make_shared<QWinEventNotifier>(control->Arrival());
    QObject::connect(notifier.get(), &QWinEventNotifier::activated, notifier.get(),
                     [&waiting = *control, guard = std::move(guard)] {
                         guard([&waiting] { waiting.Deliver(); });
                     });
    // The event loop ceases to wait before the event goes.
    return {control.release(), [notifier](SerialControl* ended) mutable {
                notifier.reset();
                delete ended;
            }};
}

} // namespace platform
