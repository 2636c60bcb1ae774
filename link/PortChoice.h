#pragma once

#include "base/PortName.h"
#include "platform/SerialControl.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

inline constexpr int maxPortNumber = PortName::last;
inline constexpr std::array<std::string_view, 8> offeredBitRates = {
    "300", "1200", "2400", "4800", "9600", "19200", "57600", "115200"};

/// Which port at which speed; the program's choice is kept in the per-user store.
struct PortChoice {
    std::int32_t BitRate = 9600; ///< bit/s
    std::int16_t PortNumber = 1; ///< COM1..COM16

    bool operator==(const PortChoice&) const = default;
};

/// 9600 bit/s on COM1 where the store holds none.
PortChoice LoadPortChoice();

/// Throws RunTimeError when the store cannot be written.
void SavePortChoice(const PortChoice& choice);

/// "9600,N,8,1" for 9600.
std::string LineFormat(std::int32_t bitRate);

/// The driver's time-outs for a bit rate above 0: per byte 10000 / bit rate ms (nearest, ties to
/// even), beside it 1000 ms.
platform::CommTimeouts TimeoutsFor(std::int32_t bitRate);
