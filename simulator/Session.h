#pragma once

#include "simulator/Faults.h"
#include "simulator/Instrument.h"
#include "simulator/Line.h"
#include "simulator/RequestParser.h"

#include <cstdint>
#include <optional>
#include <random>
#include <span>

namespace simulator {

/// The instrument at its line: requests in, frames out. It knows no port and no clock.
class Session {
public:
    Session(Instrument instrument, std::uint64_t seed);

    Instrument& Measuring() { return instrument_; }
    Line& Sending() { return line_; }

    void SetFault(const Fault& fault) { fault_ = fault; }
    const Fault& CurrentFault() const { return fault_; }

    /// Sends a frame by itself every interval, the first one after the first interval; without an
    /// interval none.
    void SetAutomatic(std::optional<Seconds> interval, Seconds now);
    std::optional<Seconds> Automatic() const { return automatic_; }

    /// Bytes from the program.
    void Receive(std::span<const std::uint8_t> bytes, Seconds now);

    /// What goes out by now.
    Line::Due Advance(Seconds now);

    /// When Advance has something to do next.
    std::optional<Seconds> NextEvent() const;

    /// The cable is out: what was under way is lost.
    void LineLost();

    std::uint64_t RequestsSeen() const { return requests_; }
    std::uint64_t FramesSent() const { return frames_; }

private:
    void SendFrame(Seconds now);

    Instrument instrument_;
    RequestParser parser_;
    Line line_;
    Fault fault_;
    std::mt19937_64 disturbance_;
    std::optional<Seconds> automatic_;
    Seconds nextAutomatic_{0};
    std::uint64_t requests_ = 0;
    std::uint64_t frames_ = 0;
};

} // namespace simulator
