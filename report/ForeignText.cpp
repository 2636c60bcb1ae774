#include "report/ForeignText.h"

#include "base/CodePage.h"

namespace ForeignText {

namespace {

struct Character {
    char32_t code = 0;
    std::size_t length = 0; ///< 0: malformed
};

std::size_t LengthOf(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// The first character of a text that is not empty.
Character FirstOf(std::string_view utf8) {
    const auto lead = static_cast<unsigned char>(utf8.front());
    const std::size_t length = LengthOf(lead);
    if (length == 0 || length > utf8.size())
        return {};
    constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t code = lead & leadBits[length];
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(utf8[i]);
        if ((next & 0xC0U) != 0x80U)
            return {};
        code = (code << 6) | (next & 0x3FU);
    }
    return {code, length};
}

} // namespace

bool IsUtf8(std::string_view sample, bool cut) {
    if (sample.starts_with(byteOrderMark))
        return true;
    bool beyondAscii = false;
    while (!sample.empty()) {
        const Character character = FirstOf(sample);
        if (character.length == 0) {
            const auto needed = LengthOf(static_cast<unsigned char>(sample.front()));
            return beyondAscii && cut && needed > sample.size();
        }
        beyondAscii = beyondAscii || character.length > 1;
        sample.remove_prefix(character.length);
    }
    return beyondAscii;
}

std::string FromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const Character character = FirstOf(utf8);
        const auto byte =
            character.length == 0 ? std::nullopt : CodePage::FromUnicode(character.code);
        text += byte ? static_cast<char>(*byte) : '?';
        utf8.remove_prefix(character.length == 0 ? 1 : character.length);
    }
    return text;
}

} // namespace ForeignText
