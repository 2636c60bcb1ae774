#include "platform/Platform.h"

#include <optional>
#include <stdexcept>

namespace platform {

namespace {

const Services* installed = nullptr;
std::optional<std::chrono::milliseconds> lastEventRun; ///< by the installed clock

} // namespace

void Install(const Services* services) {
    installed = services;
    lastEventRun.reset();
}

const Services& Current() {
    if (installed == nullptr)
        throw std::logic_error("no platform services are installed");
    return *installed;
}

void LetEventsRun() {
    const Services& services = Current();
    const auto now = services.clock.Monotonic();
    if (now == lastEventRun)
        return;
    // Before the events, so that a handler that lets events run does not recurse.
    lastEventRun = now;
    services.desktop.ProcessPendingEvents();
}

} // namespace platform
