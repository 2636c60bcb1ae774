#pragma once

#include "platform/SerialControl.h"
#include "platform/win32/Win32File.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace platform::win32 {

/// An open serial device, read and written by overlapped operations that nothing waits for.
class SerialPort {
public:
    SerialPort();
    ~SerialPort() { Close(); }
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;

    /// Opens the device for this program alone: 8 data bits, no parity, one stop bit, without
    /// handshaking. Throws RunTimeError with the reason alone.
    void Open(const std::string& device, std::uint32_t bitRate);
    void Close();
    bool IsOpen() const { return device_.IsOpen(); }

    /// The event that is signalled when bytes may have arrived or the device may have gone. One
    /// and the same for all openings.
    HANDLE Arrival() const { return arrival_.Get(); }

    /// Adds what has arrived to `bytes`, without waiting, and listens on. False when the device
    /// has gone.
    bool TakeArrived(std::vector<std::uint8_t>& bytes);

    /// Drops what the system holds of the input and nobody has taken.
    void ClearInput();

    /// Writes all bytes; 0, or the system's error.
    DWORD Write(std::span<const std::uint8_t> bytes);

    bool HasGone() const;

    CommTimeouts Timeouts() const;
    void SetTimeouts(const CommTimeouts& timeouts);

private:
    /// How arrivals are learnt of: by the driver's event or, with drivers that have none, by a
    /// read of one byte that ends when it comes.
    enum class Listening { byEvent, byByte };

    void Configure(std::uint32_t bitRate);
    void Listen();
    bool ListenByEvent();
    void ListenByByte();
    bool EndListening(std::vector<std::uint8_t>& bytes);
    bool ReadQueued(std::vector<std::uint8_t>& bytes);

    FileHandle arrival_;
    FileHandle finished_; ///< signalled when a read or write of known length is done
    FileHandle device_;
    Listening listening_ = Listening::byEvent;
    bool pending_ = false; ///< `wait_` is at work or has ended unseen
    OVERLAPPED wait_{};
    DWORD eventMask_ = 0; ///< filled by the driver while it is at work
    std::uint8_t byte_ = 0;
};

} // namespace platform::win32
