#include "walk/Watchdog.h"

#include <cstdlib>
#include <ctime>
#include <utility>

namespace {

std::int64_t Now_ms(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

} // namespace

Watchdog::Watchdog(std::chrono::milliseconds limit, std::function<void()> tell) {
    SignOfLife();
    longest_ms_ = 0;
    thread_ = std::thread([this, limit, tell = std::move(tell)] { Watch(limit, tell); });
}

Watchdog::~Watchdog() {
    done_ = true;
    thread_.join();
}

void Watchdog::SignOfLife() {
    const std::int64_t now = Now_ms(CLOCK_MONOTONIC);
    longest_ms_ = std::max(longest_ms_.load(), now - lastSign_ms_.exchange(now));
    processorAtSign_ms_ = Now_ms(CLOCK_PROCESS_CPUTIME_ID);
}

void Watchdog::Watch(std::chrono::milliseconds limit, const std::function<void()>& tell) {
    while (!done_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        const bool busy = Now_ms(CLOCK_PROCESS_CPUTIME_ID) - processorAtSign_ms_ > limit.count();
        const bool still = Now_ms(CLOCK_MONOTONIC) - lastSign_ms_ > 10 * limit.count();
        if (busy || still) {
            tell();
            std::abort(); // a core file shows where it stands
        }
    }
}
