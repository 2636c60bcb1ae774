#include "base/CodePage.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <exception>

namespace CodePage {

namespace {

/// Characters of the bytes 128 to 159; the other bytes are the characters of the same number.
/// Source: the Unicode consortium's mapping table CP1252.TXT, undefined bytes left as controls.
constexpr std::array<char32_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned char firstUpperControl = 0x80;
constexpr unsigned char firstLatin1 = 0xA0;

} // namespace

char32_t ToUnicode(unsigned char byte) {
    if (byte < firstUpperControl || byte >= firstLatin1)
        return byte;
    return upperControls[byte - firstUpperControl];
}

std::optional<unsigned char> FromUnicode(char32_t character) {
    if (character < firstUpperControl || (character >= firstLatin1 && character <= 0xFF))
        return static_cast<unsigned char>(character);
    const auto found = std::find(upperControls.begin(), upperControls.end(), character);
    if (found == upperControls.end())
        return std::nullopt;
    return static_cast<unsigned char>(firstUpperControl + (found - upperControls.begin()));
}

std::string ToUtf8(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text)
        Utf8::Append(utf8, ToUnicode(static_cast<unsigned char>(c)));
    return utf8;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = Utf8::First(utf8);
        const auto byte = character.length == 0 ? std::nullopt : FromUnicode(character.code);
        if (!byte)
            return std::nullopt;
        text += static_cast<char>(*byte);
        utf8.remove_prefix(character.length);
    }
    return text;
}

std::string Legible(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = Utf8::First(utf8);
        const bool broken = character.length == 0;
        const auto byte = broken ? std::nullopt : FromUnicode(character.code);
        text += byte ? static_cast<char>(*byte) : '?';
        utf8.remove_prefix(broken ? 1 : character.length);
    }
    return text;
}

std::filesystem::path ToPath(std::string_view text) {
    const std::string utf8 = ToUtf8(text);
    return std::u8string(utf8.begin(), utf8.end());
}

std::optional<std::string> FromPath(const std::filesystem::path& path) {
    try {
        const std::u8string utf8 = path.u8string();
        return FromUtf8(std::string(utf8.begin(), utf8.end()));
    } catch (const std::exception&) { // a name that is no Unicode text at all
        return std::nullopt;
    }
}

std::string NameOf(const std::filesystem::path& path) {
    try {
        const std::u8string utf8 = path.u8string();
        return Legible(std::string(utf8.begin(), utf8.end()));
    } catch (const std::exception&) { // a name that is no Unicode text at all
        return "?";
    }
}

} // namespace CodePage
