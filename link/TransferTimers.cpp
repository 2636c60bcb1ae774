#include "link/TransferTimers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

void TransferTimers::Follow(TransferState::State state) {
    if (!IsAwaiting(state))
        EndWait();
    if (auto* timer = controls_.tmrTransferInterval; timer && timer->Enabled() != IsPolling(state))
        timer->SetEnabled(IsPolling(state));
}

void TransferTimers::StartWait() {
    auto* timer = controls_.tmrTimeout;
    if (!timer)
        return;
    timer->SetInterval(CommPort::transferTimeout);
    timer->SetEnabled(true);
}

void TransferTimers::EndWait() {
    if (auto* timer = controls_.tmrTimeout)
        timer->SetEnabled(false);
}

void TransferTimers::RestartInterval() {
    auto* timer = controls_.tmrTransferInterval;
    if (!timer)
        return;
    ApplyInterval();
    timer->SetEnabled(true);
}

void TransferTimers::ApplyInterval() {
    auto* timer = controls_.tmrTransferInterval;
    if (!timer)
        return;
    const auto value = controls_.IntervalValue ? controls_.IntervalValue() : 1;
    const auto unit = controls_.IntervalUnit ? controls_.IntervalUnit() : std::string("seconds");
    const auto interval = CommPort::TransferInterval(value, unit);
    if (timer->Interval() != interval)
        timer->SetInterval(interval);
}

std::chrono::milliseconds CommPort::TransferInterval(int value, std::string_view unit) {
    const int count = std::max(value, 1);
    if (unit == "Hour(s)")
        return std::min<std::chrono::milliseconds>(
            std::chrono::hours(count),
            std::chrono::milliseconds(std::numeric_limits<std::int32_t>::max()));
    if (unit == "Minutes")
        return std::chrono::minutes(count);
    return std::chrono::seconds(count);
}
