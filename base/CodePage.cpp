#include "base/CodePage.h"

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

void AppendUtf8(std::string& utf8, char32_t character) {
    const auto tail = [&](int shift) {
        utf8 += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
    } else if (character < 0x800) {
        utf8 += static_cast<char>(0xC0U | (character >> 6));
        tail(0);
    } else { // the code page has no character beyond the basic plane
        utf8 += static_cast<char>(0xE0U | (character >> 12));
        tail(6);
        tail(0);
    }
}

/// Takes the first character off `utf8`, which is not empty; nothing when it is malformed. A
/// sequence longer than three bytes is beyond the basic plane and so beyond the code page.
std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
    const auto lead = static_cast<unsigned char>(utf8.front());
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : 3;
    if (length == 3 && (lead & 0xF0U) != 0xE0U)
        return std::nullopt;
    if (utf8.size() < length)
        return std::nullopt;
    char32_t character = length == 1 ? lead : length == 2 ? lead & 0x1FU : lead & 0x0FU;
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(utf8[i]);
        if ((next & 0xC0U) != 0x80U)
            return std::nullopt;
        character = (character << 6) | (next & 0x3FU);
    }
    if (length == 3 && character < 0x800) // an overlong form
        return std::nullopt;
    utf8.remove_prefix(length);
    return character;
}

/// Takes a byte that begins no character, with the continuation bytes behind it.
void DropSequence(std::string_view& utf8) {
    const auto isContinuation = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    };
    do
        utf8.remove_prefix(1);
    while (!utf8.empty() && isContinuation(utf8.front()));
}

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
        AppendUtf8(utf8, ToUnicode(static_cast<unsigned char>(c)));
    return utf8;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = TakeCharacter(utf8);
        const auto byte = character ? FromUnicode(*character) : std::nullopt;
        if (!byte)
            return std::nullopt;
        text += static_cast<char>(*byte);
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
    std::string name;
    try {
        const std::u8string utf8 = path.u8string();
        const std::string text(utf8.begin(), utf8.end());
        std::string_view rest = text;
        while (!rest.empty()) {
            const auto character = TakeCharacter(rest);
            if (!character)
                DropSequence(rest);
            const auto byte = character ? FromUnicode(*character) : std::nullopt;
            name += byte ? static_cast<char>(*byte) : '?';
        }
    } catch (const std::exception&) { // a name that is no Unicode text at all
        name = "?";
    }
    return name;
}

} // namespace CodePage
