#pragma once

#include "link/Probe.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Tries ports and bit rates, one after the other, until an instrument answers. A port that cannot
/// be opened, because another program holds it for example, is passed over untouched.
class InstrumentSearch {
public:
    struct Found {
        PortChoice choice;
        Frame::Values values;
    };

    /// What the search does now, for example "Trying COM5 at 9600 bit/s...".
    std::function<void(const std::string&)> TellStep;

    /// The search has ended by itself; with an instrument found, its port is open.
    std::function<void(const std::optional<Found>&)> TellEnd;

    /// Both must outlive the search.
    InstrumentSearch(Port& port, Probe& probe) : port_(port), probe_(probe) {}
    InstrumentSearch(const InstrumentSearch&) = delete;
    InstrumentSearch& operator=(const InstrumentSearch&) = delete;

    /// Tries the ports that the last scan could open, each at `likelyBitRate` first, then at the
    /// offered ones.
    void Start(std::int32_t likelyBitRate);

    /// Ends without telling; the port is closed.
    void Stop();

    bool IsRunning() const { return running_; }

    /// Long enough for a request and a whole frame at this speed, and for an instrument that thinks
    /// before it answers.
    static std::chrono::milliseconds WaitAt(std::int32_t bitRate);

private:
    void TryNext();
    bool Open(const PortChoice& choice);
    void Answered(const PortChoice& choice, const Probe::Answer& answer);
    void End(const std::optional<Found>& found);

    Port& port_;
    Probe& probe_;
    std::vector<PortChoice> toTry_;
    std::size_t next_ = 0;
    bool running_ = false;
};
