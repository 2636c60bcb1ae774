#include "platform/posix/TextEncoding.h"

#include "base/CodePage.h"
#include "base/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace platform::posix {

namespace {

constexpr std::string_view utf16LittleMark = "\xFF\xFE";
constexpr std::string_view utf16BigMark = "\xFE\xFF";

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unitAt = [&](std::size_t i) -> char32_t {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return bigEndian ? 256U * first + second : 256U * second + first;
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unitAt(i);
        if (IsHighSurrogate(c) && i + 3 < bytes.size() && IsLowSurrogate(unitAt(i + 2))) {
            c = 0x10000 + ((c - 0xD800) << 10) + (unitAt(i + 2) - 0xDC00);
            i += 2;
        }
        Utf8::Append(text, c);
    }
    return text;
}

std::string ToUtf16(std::string_view text, bool bigEndian) {
    std::string bytes;
    const auto append = [&](char32_t unit) {
        const auto high = static_cast<char>(unit >> 8U);
        const auto low = static_cast<char>(unit & 0xFFU);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    };
    while (!text.empty()) {
        const auto character = Utf8::First(text); // of UTF-8 that FromUtf16 or the core has made
        const char32_t c = character.code;
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
        if (c < 0x10000) {
            append(c);
        } else {
            append(0xD800 + ((c - 0x10000) >> 10));
            append(0xDC00 + ((c - 0x10000) & 0x3FFU));
        }
    }
    return bytes;
}

} // namespace

TextEncoding EncodingOf(std::string_view bytes) {
    if (bytes.starts_with(Utf8::byteOrderMark))
        return TextEncoding::utf8;
    if (bytes.starts_with(utf16LittleMark))
        return TextEncoding::utf16Little;
    if (bytes.starts_with(utf16BigMark))
        return TextEncoding::utf16Big;
    return TextEncoding::codePage;
}

std::string Decoded(std::string_view bytes, TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::utf8:
        return std::string(bytes.substr(Utf8::byteOrderMark.size()));
    case TextEncoding::utf16Little:
        return FromUtf16(bytes.substr(utf16LittleMark.size()), false);
    case TextEncoding::utf16Big:
        return FromUtf16(bytes.substr(utf16BigMark.size()), true);
    case TextEncoding::codePage:
        break;
    }
    return std::string(bytes);
}

std::string Encoded(std::string_view text, TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::utf8:
        return std::string(Utf8::byteOrderMark).append(text);
    case TextEncoding::utf16Little:
        return std::string(utf16LittleMark) + ToUtf16(text, false);
    case TextEncoding::utf16Big:
        return std::string(utf16BigMark) + ToUtf16(text, true);
    case TextEncoding::codePage:
        break;
    }
    return std::string(text);
}

std::string FromCodePage(std::string_view text, TextEncoding encoding) {
    return encoding == TextEncoding::codePage ? std::string(text) : CodePage::ToUtf8(text);
}

std::string ToCodePage(std::string_view text, TextEncoding encoding) {
    return encoding == TextEncoding::codePage ? std::string(text) : CodePage::Legible(text);
}

} // namespace platform::posix
