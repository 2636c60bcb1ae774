#include "base/Utf8.h"

#include <array>

namespace Utf8 {

namespace {

// By the length of a character: its smallest code, and the bits of its first byte.
constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
constexpr std::array<unsigned, 5> leadMark = {0, 0, 0xC0, 0xE0, 0xF0};
constexpr std::array<unsigned, 5> leadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
constexpr char32_t largest = 0x10FFFF;

unsigned Byte(char c) {
    return static_cast<unsigned char>(c);
}

} // namespace

std::size_t LengthOf(char lead) {
    const unsigned byte = Byte(lead);
    if (byte < 0x80)
        return 1;
    if (byte < 0xC2) // a byte behind a first one, or that of an overlong form
        return 0;
    if (byte < 0xE0)
        return 2;
    if (byte < 0xF0)
        return 3;
    return byte < 0xF5 ? 4 : 0;
}

Character First(std::string_view text) {
    const std::size_t length = LengthOf(text.front());
    if (length == 0 || length > text.size())
        return {};
    char32_t code = Byte(text.front()) & leadBits[length];
    for (const char c : text.substr(1, length - 1)) {
        if ((Byte(c) & 0xC0U) != 0x80U)
            return {};
        code = (code << 6U) | (Byte(c) & 0x3FU);
    }
    if (code < smallest[length] || code > largest)
        return {};
    return {code, length};
}

void Append(std::string& text, char32_t character) {
    std::size_t length = 1;
    while (length + 1 < smallest.size() && character >= smallest[length + 1])
        ++length;
    unsigned shift = 6U * static_cast<unsigned>(length - 1);
    text += static_cast<char>(leadMark[length] | (character >> shift));
    while (shift > 0) {
        shift -= 6;
        text += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    }
}

} // namespace Utf8
