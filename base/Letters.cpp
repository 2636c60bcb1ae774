#include "base/Letters.h"

#include <algorithm>

namespace Letters {

namespace {

bool SameLetter(char left, char right) {
    return Lower(left) == Lower(right);
}

} // namespace

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool SameText(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, SameLetter);
}

bool BeginsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && SameText(text.substr(0, start.size()), start);
}

bool Contains(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(), SameLetter) !=
               text.end() ||
           part.empty();
}

std::string TrimControl(std::string_view text) {
    return std::string(WithoutControl(text));
}

} // namespace Letters
