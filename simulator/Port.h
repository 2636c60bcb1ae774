#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace simulator {

/// The instrument's end of the cable.
class Port {
public:
    virtual ~Port() = default;

    /// Becomes readable when there is something for Read, and not before.
    virtual int PollDescriptor() const = 0;

    /// Whatever has arrived, without waiting. Throws RunTimeError when the port has gone.
    virtual std::vector<std::uint8_t> Read() = 0;

    /// Sends without waiting; what nobody takes is lost, as on a line. Throws RunTimeError when
    /// the port has gone.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;

    /// The speed that the program at the other end has set, where that can be seen.
    virtual std::optional<std::uint32_t> PeerBitRate() const = 0;

    /// The device at which the program finds the instrument.
    virtual std::string Name() const = 0;
};

/// A new pseudo-terminal at 9600 bit/s until the program sets its speed. Destroying it is pulling
/// the cable: the program sees a hang-up. Throws RunTimeError.
std::unique_ptr<Port> OpenPseudoTerminal();

/// A serial device of the machine, raw, 8 data bits, no parity, 1 stop bit, no handshaking. Throws
/// RunTimeError.
std::unique_ptr<Port> OpenSerialDevice(const std::string& path, std::uint32_t bitRate);

} // namespace simulator
