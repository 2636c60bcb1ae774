#include "platform/System.h"

#include <ctime>

namespace platform {

namespace {

class PosixClock : public Clock {
public:
    LocalTime Now() const override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        // A leap second, where the system tells of one, is shown as the second before it.
        const int second = local.tm_sec > 59 ? 59 : local.tm_sec;
        return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                local.tm_hour,        local.tm_min,     second};
    }

    std::chrono::milliseconds Monotonic() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

} // namespace

std::unique_ptr<Clock> MakeClock() {
    return std::make_unique<PosixClock>();
}

} // namespace platform
