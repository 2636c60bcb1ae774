#include "platform/qt/PrintTarget.h"

#include <QLibrary>

namespace platform {

// Qt hands a document to CUPS without looking at the answer; CUPS keeps it for the thread that
// asked. The library is there when Qt's print plugin is, so the program does not link it.
QString QueueError() {
    constexpr int lastSuccess = 0x00ff; // of the IPP status codes
    QLibrary cups("cups", 2);
    const auto lastError = reinterpret_cast<int (*)()>(cups.resolve("cupsLastError"));
    const auto lastErrorString =
        reinterpret_cast<const char* (*)()>(cups.resolve("cupsLastErrorString"));
    if (lastError == nullptr || lastErrorString == nullptr || lastError() <= lastSuccess)
        return {};
    return QString::fromUtf8(lastErrorString());
}

} // namespace platform
