#include "simulator/Words.h"

#include "base/Letters.h"
#include "base/RunTimeError.h"
#include "simulator/Quantities.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace simulator {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::optional<double> Number(std::string_view word) {
    if (word.size() > 1 && word.front() == '+' && word[1] != '-')
        word.remove_prefix(1);
    double value = 0;
    const auto end = std::from_chars(word.data(), word.data() + word.size(), value);
    if (end.ec != std::errc{} || end.ptr != word.data() + word.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

Words::Words(std::string_view line) {
    std::size_t begin = line.find_first_not_of(blanks);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(line.find_first_of(blanks, begin), line.size());
        words_.emplace_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(blanks, end);
    }
}

std::string_view Words::Peek() const {
    return AtEnd() ? std::string_view() : std::string_view(words_[next_]);
}

bool Words::TakeIf(std::string_view word) {
    if (AtEnd() || !Letters::SameText(words_[next_], word))
        return false;
    ++next_;
    return true;
}

std::string Words::Take(std::string_view what) {
    if (AtEnd())
        throw RunTimeError(std::string(what) + " is missing");
    return words_[next_++];
}

double Words::TakeNumber(std::string_view what, double least, double most) {
    const std::string word = Take(what);
    const std::optional<double> value = Number(word);
    if (!value)
        throw RunTimeError(std::string(what) + ": \"" + word + "\" is not a number");
    if (*value < least || *value > most)
        throw RunTimeError(std::string(what) + ": " + word + " is not from " + Short(least) +
                           " to " + Short(most));
    return *value;
}

int Words::TakeInteger(std::string_view what, int least, int most) {
    const double value = TakeNumber(what, least, most);
    if (value != std::floor(value))
        throw RunTimeError(std::string(what) + ": " + Short(value) + " is not a whole number");
    return static_cast<int>(value);
}

bool Words::NumberFollows() const {
    return !AtEnd() && Number(words_[next_]).has_value();
}

void Words::ExpectEnd() const {
    if (!AtEnd())
        throw RunTimeError("\"" + words_[next_] + "\" is not understood here");
}

} // namespace simulator
