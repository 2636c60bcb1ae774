#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

/// Watches from a thread of its own whether the event loop stands still.
class Watchdog {
public:
    /// `limit` of processor time that the program uses without a sign of life, or ten times as much
    /// of the clock's, is a standstill, which ends the test at once with what `tell` has to say.
    Watchdog(std::chrono::milliseconds limit, std::function<void()> tell);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// The event loop runs.
    void SignOfLife();

    /// The longest time of the clock between two signs of life.
    std::chrono::milliseconds LongestGap() const { return std::chrono::milliseconds(longest_ms_); }

private:
    void Watch(std::chrono::milliseconds limit, const std::function<void()>& tell);

    std::atomic<std::int64_t> lastSign_ms_;
    std::atomic<std::int64_t> processorAtSign_ms_;
    std::atomic<std::int64_t> longest_ms_ = 0;
    std::atomic<bool> done_ = false;
    std::thread thread_;
};
