#pragma once

#include <string>
#include <string_view>

/// Letters A to Z without regard to case, digits, and blanks at the ends. Other letters of the code
/// page are equal only to themselves, as in the system's own calls.
namespace Letters {

char Lower(char letter);

constexpr bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// True when both texts are equal but for the case of A to Z.
bool SameText(std::string_view left, std::string_view right);

/// True when the text begins with `start`, but for case.
bool BeginsWith(std::string_view text, std::string_view start);

/// True when the text holds `part`, but for case.
bool Contains(std::string_view text, std::string_view part);

/// The text without the characters in front that `isBlank` tells.
template <class Predicate>
std::string_view WithoutLeading(std::string_view text, Predicate isBlank) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

/// The same at both ends.
template <class Predicate>
std::string_view Trimmed(std::string_view text, Predicate isBlank) {
    text = WithoutLeading(text, isBlank);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Without the characters below code 33 at both ends.
inline std::string_view WithoutControl(std::string_view text) {
    constexpr unsigned char firstPrintable = 33;
    return Trimmed(text,
                   [](char letter) { return static_cast<unsigned char>(letter) < firstPrintable; });
}
std::string TrimControl(std::string_view text);

} // namespace Letters
