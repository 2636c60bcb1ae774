#pragma once

#include "link/PortChoice.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// The serial port: opening, test of what can be opened, and its bytes. It knows no protocol.
class Port {
public:
    static constexpr std::size_t inputBufferSize = 256;

    bool PortOK = false; ///< the port was opened successfully
    /// What the last scan found, indices 1..16.
    std::array<bool, maxPortNumber + 1> PortAvailable{};

    /// The control must outlive the attachment; nullptr ends it.
    void Attach(platform::SerialControl* control) { control_ = control; }
    bool IsAttached() const { return control_ != nullptr; }

    /// Throws RunTimeError where nothing is attached.
    platform::SerialControl& Control() const;

    bool IsOpen() const { return control_ && control_->PortOpen(); }

    /// Opens the port, closing it first where it was open, with no receive events. Throws
    /// RunTimeError with the reason when it cannot be opened.
    void Open(const PortChoice& choice);

    /// Sets the driver's time-outs of the open port; without one it does nothing.
    void SetTimeouts(std::int32_t bitRate);

    /// Open and SetTimeouts, with the outcome in PortOK. Throws as Open.
    void OpenWithTimeouts(const PortChoice& choice);

    /// Sees to it that the device is open which the port's name stands for at this moment: another
    /// one, or one that has gone, is closed. Throws as Open; the port is closed then.
    void OpenWhatStandsFor(const PortChoice& choice);

    void Close();

    /// Receive events at this number of bytes, 0 for none; without an open port it does nothing.
    void SetThreshold(std::size_t bytes);

    /// Tries COM1..COM16, fills PortAvailable and leaves the control closed, on the port that it
    /// had before. A failure is kept as the port's problem.
    void Scan();

    /// What the last scan found of a port; false for a number that is no port's.
    bool IsAvailable(int number) const;

    /// The names of the ports that the last scan could open.
    std::vector<std::string> AvailablePorts() const;

    /// Why the last scan could not open a port, 1..16; empty where it could.
    const std::string& Problem(int number) const;

private:
    void Try(int number);

    platform::SerialControl* control_ = nullptr;
    std::array<std::string, maxPortNumber + 1> problem_;
};
