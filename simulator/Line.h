#pragma once

#include "simulator/Quantities.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace simulator {

/// Bits on the line for a byte: start bit, eight data bits, stop bit.
inline constexpr int bitsPerByte = 10;

/// The sending half of the serial line. A byte is due when its last bit has passed, so 48 bytes at
/// 9600 bit/s take 50 ms.
class Line {
public:
    struct Due {
        std::vector<std::uint8_t> bytes;
        bool unplug = false; ///< the cable is pulled behind these bytes
    };

    void SetBitRate(std::uint32_t bitsPerSecond);
    std::uint32_t BitRate() const { return bitRate_; }

    /// Lifts the line's speed: bytes are due at once.
    void SetFast(bool fast) { fast_ = fast; }
    bool Fast() const { return fast_; }

    /// Puts bytes behind those that still go out, after a pause.
    void Send(std::span<const std::uint8_t> bytes, Seconds pause, Seconds now);

    /// Pulls the cable when all before has gone out.
    void UnplugBehind(Seconds now);

    /// Takes what is due.
    Due TakeDue(Seconds now);

    std::optional<Seconds> NextDue() const;
    std::size_t Waiting() const { return items_.size(); }

    /// Sends nothing more of what waits.
    void Clear() { items_.clear(); }

private:
    struct Item {
        Seconds due;
        std::uint8_t byte;
        bool unplug;
    };

    Seconds End(Seconds now) const;

    std::uint32_t bitRate_ = 9600;
    bool fast_ = false;
    std::deque<Item> items_;
};

} // namespace simulator
