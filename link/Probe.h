#pragma once

#include "link/FrameStream.h"
#include "link/Port.h"
#include "platform/Timer.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

/// Asks the open port once whether an instrument is there, outside any reading: no box, no status.
/// Arrivals and its timer's tick carry it on.
class Probe {
public:
    using Answer = std::optional<Frame::Values>; ///< nothing: no good frame came in time

    /// The port must outlive the probe.
    explicit Probe(Port& port) : port_(port) {}
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    /// One that is attached must outlive the attachment; without one, nothing is asked.
    void Attach(platform::Timer* timer) { timer_ = timer; }

    /// Empties the input buffer, requests a frame and tells what has come of it, at most after
    /// `wait`. A port that cannot be written to gives no answer.
    void Start(std::chrono::milliseconds wait, std::function<void(const Answer&)> tell);

    /// Ends without telling.
    void Stop();

    bool IsRunning() const { return static_cast<bool>(tell_); }

    void OnArrival();
    void OnTimer();

private:
    void TakeArrived();
    void End(const Answer& answer);

    Port& port_;
    platform::Timer* timer_ = nullptr;
    FrameStream stream_;
    std::function<void(const Answer&)> tell_; ///< empty while nothing is asked
};

/// For the analyst: the eight values in the order of the frame, potentials in mV, sensors in their
/// own units; without an answer what to look at.
std::string TextOf(const Probe::Answer& answer);
