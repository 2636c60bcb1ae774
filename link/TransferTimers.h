#pragma once

#include "link/Controls.h"
#include "link/TransferState.h"

#include <chrono>
#include <string_view>

namespace CommPort {

inline constexpr std::chrono::milliseconds transferTimeout{3000};

/// Time between requests; the units are "seconds", "Minutes" and "Hour(s)", any other text counts
/// as seconds, a value below 1 as 1.
std::chrono::milliseconds TransferInterval(int value, std::string_view unit);

} // namespace CommPort

/// The two timers of the exchange of frames, as far as there are any: the wait for an answer, and
/// the interval from one request to the next.
class TransferTimers {
public:
    /// The controls must outlive the timers.
    explicit TransferTimers(const CommPort::Controls& controls) : controls_(controls) {}

    /// The wait ends where the state awaits nothing; the interval runs where it polls.
    void Follow(TransferState::State state);

    /// The wait for an answer: a whole one from now on.
    void StartWait();

    /// A whole interval from now on.
    void RestartInterval();

    /// The interval is what its controls say; one that runs goes on where they say the same.
    void ApplyInterval();

private:
    void EndWait();

    const CommPort::Controls& controls_;
};
