#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <termios.h>

namespace simulator {

/// A bit rate as text; one that serial lines know. Throws RunTimeError.
std::uint32_t ParseBitRateText(std::string_view text);

/// The bit rate behind a speed code of the system; nothing for codes that are no rate.
std::optional<std::uint32_t> BitRateOf(speed_t code);

/// The speed code of a bit rate that ParseBitRateText gave.
speed_t SpeedCodeOf(std::uint32_t bitRate);

} // namespace simulator
