#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8, character by character.
namespace Utf8 {

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct Character {
    char32_t code = 0;
    std::size_t length = 0; ///< bytes; 0 where the text begins with no well-formed character
};

/// The first character of a text that is not empty. An unpaired surrogate, as Append writes it,
/// counts as well-formed.
Character First(std::string_view text);

/// How many bytes a character has that begins with this one; 0 for a byte that begins none.
std::size_t LengthOf(char lead);

/// Adds a character. An unpaired surrogate is written too, so that it comes back as it was.
void Append(std::string& text, char32_t character);

} // namespace Utf8
