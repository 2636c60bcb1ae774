#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// The driver's time-out record of an open port, in ms.
struct CommTimeouts {
    std::uint32_t readInterval = 0;
    std::uint32_t readTotalMultiplier = 0;
    std::uint32_t readTotalConstant = 0;
    std::uint32_t writeTotalMultiplier = 0;
    std::uint32_t writeTotalConstant = 0;

    bool operator==(const CommTimeouts&) const = default;
};

/// The serial communication control: it knows bytes and a port, no protocol.
class SerialControl {
public:
    enum class Event { receive = 2, portLost = 100 };

    virtual ~SerialControl() = default;

    virtual void SetCommPort(int number) = 0; ///< 1..16
    virtual int CommPort() const = 0;

    /// Line format, for example "9600,N,8,1".
    virtual void SetSettings(const std::string& settings) = 0;

    /// Opens or closes the port, without handshaking. Opening throws RunTimeError with the reason
    /// and, where the user can mend it, with how.
    virtual void SetPortOpen(bool open) = 0;
    virtual bool PortOpen() const = 0;

    /// The open port is not on the device that its number stands for now: the name leads to
    /// another one, or the device has gone.
    virtual bool DeviceChanged() const = 0;

    virtual void SetBufferSize(std::size_t bytes) = 0;

    /// Bytes that make a receive event; 0 for none.
    virtual void SetRThreshold(int bytes) = 0;
    virtual int RThreshold() const = 0;

    virtual std::size_t InBufferCount() const = 0;
    virtual void ClearInBuffer() = 0;

    /// Takes at most `count` bytes from the input buffer.
    virtual std::vector<std::uint8_t> Input(std::size_t count) = 0;

    /// Writes all bytes at once. Throws RunTimeError when the port has gone.
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;

    virtual CommTimeouts GetCommTimeouts() const = 0;
    virtual void SetCommTimeouts(const CommTimeouts& timeouts) = 0;

    /// Called for receive events by the threshold and when the open port has gone.
    std::function<void(Event)> OnComm;

    /// Called at every arrival of bytes, whatever the threshold.
    std::function<void()> OnArrival;
};

} // namespace platform
