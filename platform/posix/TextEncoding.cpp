#include "platform/posix/TextEncoding.h"

#include "base/CodePage.h"

#include <cstddef>

namespace platform::posix {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16LittleMark = "\xFF\xFE";
constexpr std::string_view utf16BigMark = "\xFE\xFF";

void AppendUtf8(std::string& text, char32_t c) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0U | (c >> 6));
        tail(0);
    } else if (c < 0x10000) { // an unpaired surrogate too, so that it comes back as it was
        text += static_cast<char>(0xE0U | (c >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Bytes of the UTF-8 character that begins with `lead`; 1 for a byte that begins none.
std::size_t LengthOf(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0xC0)
        return 1;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

/// Takes one character off a text of this module's own UTF-8.
char32_t TakeUtf8(std::string_view& text) {
    const std::size_t length = std::min(LengthOf(text.front()), text.size());
    constexpr unsigned char leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t c = static_cast<unsigned char>(text.front()) & leadBits[length];
    for (std::size_t i = 1; i < length; ++i)
        c = (c << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    text.remove_prefix(length);
    return c;
}

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
        AppendUtf8(text, c);
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
        const char32_t c = TakeUtf8(text);
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
    if (bytes.starts_with(utf8Mark))
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
        return std::string(bytes.substr(utf8Mark.size()));
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
        return std::string(utf8Mark).append(text);
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
    if (encoding == TextEncoding::codePage)
        return std::string(text);
    std::string result;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, LengthOf(text.front()));
        result += CodePage::FromUtf8(character).value_or("?");
        text.remove_prefix(character.size());
    }
    return result;
}

} // namespace platform::posix
