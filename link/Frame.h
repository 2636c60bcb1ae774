#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// The instrument's frame: eight signed values in tenths, each a sign, four digits and a separator
/// (TAB, after the last value EOT).
namespace Frame {

inline constexpr std::size_t length = 48;
inline constexpr std::size_t valueCount = 8;
inline constexpr std::size_t fieldLength = length / valueCount;
inline constexpr std::uint8_t endOfTransmission = 0x04;

using Bytes = std::array<std::uint8_t, length>;
using Values = std::array<float, valueCount>;

/// The character of a received byte by its hexadecimal text without leading zero: "2B" is "+",
/// "2D" is "-", "30".."39" are the digits, "9" is TAB, "4" is "[EOT]"; anything else is "Error".
std::string_view DecodeHexPair(std::string_view hexText);

/// True when the last byte is EOT; only such a frame may be decoded.
bool IsComplete(std::span<const std::uint8_t, length> frame);

/// True when the bytes, counted back from the last, each stand in their place of a frame: signs,
/// digits, separators, EOT at the end. At most a frame's length of them.
bool IsTail(std::span<const std::uint8_t> bytes);

/// The eight values in mV or sensor units, read leniently: a byte outside the alphabet makes its
/// value smaller or zero and leaves the others alone.
Values Decode(std::span<const std::uint8_t, length> frame);

} // namespace Frame
