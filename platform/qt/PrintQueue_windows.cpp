#include "platform/qt/PrintTarget.h"

namespace platform {

// The spooler reports a document that it refuses while it is being drawn.
QString QueueError() {
    return {};
}

} // namespace platform
