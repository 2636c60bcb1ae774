#include "platform/Platform.h"

#include <stdexcept>

namespace platform {

namespace {
const Services* installed = nullptr;
}

void Install(const Services* services) {
    installed = services;
}

const Services& Current() {
    if (installed == nullptr)
        throw std::logic_error("no platform services are installed");
    return *installed;
}

} // namespace platform
