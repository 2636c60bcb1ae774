#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Bytes as digits 0-9 a-f.
inline std::string HexText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned base = 16;
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte / base];
        text += digits[byte % base];
    }
    return text;
}

/// A SHA-256 (FIPS 180-4) that grows with its bytes.
class Digest {
public:
    virtual ~Digest() = default;

    virtual void Add(std::span<const char> bytes) = 0;

    /// Of all bytes so far, in digits 0-9 a-f; more may be added behind it.
    virtual std::string Hex() const = 0;
};

} // namespace platform
