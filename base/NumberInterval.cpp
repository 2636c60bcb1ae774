#include "base/NumberInterval.h"

#include "base/Letters.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

namespace NumberText {

namespace {

constexpr double halfOfSeventhDigit = 5e-7; ///< relative, of the smallest seven-digit mantissa
constexpr int mostDigits = 18;              ///< a 64-bit integer holds them
constexpr int largestExponent = 99;

/// The digits of a number without its exponent: digits * 10^place.
struct Mantissa {
    bool negative = false;
    std::int64_t digits = 0;
    int place = 0; ///< of the last digit; 10^place is its worth
};

/// Takes the mantissa off the text; nothing where no digit or too many come.
std::optional<Mantissa> TakeMantissa(std::string_view& text) {
    Mantissa mantissa;
    if (text.starts_with('-')) {
        mantissa.negative = true;
        text.remove_prefix(1);
    }
    bool behindPoint = false;
    int count = 0;
    for (; !text.empty(); text.remove_prefix(1)) {
        const char letter = text.front();
        if (letter == '.' && !behindPoint && count > 0) {
            behindPoint = true;
            continue;
        }
        if (!Letters::IsDigit(letter))
            break;
        mantissa.digits = mantissa.digits * 10 + (letter - '0');
        mantissa.place -= behindPoint ? 1 : 0;
        if (++count > mostDigits)
            return std::nullopt;
    }
    return count == 0 ? std::nullopt : std::optional(mantissa);
}

/// What is left of the text as an exponent, "E-03"; 0 for an empty rest, nothing for any other.
std::optional<int> ReadExponent(std::string_view text) {
    if (text.empty())
        return 0;
    if (text.front() != 'E')
        return std::nullopt;
    text.remove_prefix(1);
    if (text.starts_with('+') && text.size() > 1 && Letters::IsDigit(text[1]))
        text.remove_prefix(1);
    int exponent = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, exponent);
    if (result.ec != std::errc() || result.ptr != end || std::abs(exponent) > largestExponent)
        return std::nullopt;
    return exponent;
}

double PowerOfTen(int exponent) {
    // What displays give; a week's file has millions of them.
    constexpr int lowest = -12;
    constexpr std::array<double, 17> powers = {1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7,
                                               1e-6,  1e-5,  1e-4,  1e-3, 1e-2, 1e-1,
                                               1e0,   1e1,   1e2,   1e3,  1e4};
    const int place = exponent - lowest;
    if (place >= 0 && place < static_cast<int>(powers.size()))
        return powers[static_cast<std::size_t>(place)];
    return std::pow(10.0, exponent);
}

} // namespace

std::optional<NumberInterval> MeantBy(std::string_view text) {
    const auto mantissa = TakeMantissa(text);
    if (!mantissa)
        return std::nullopt;
    const auto exponent = ReadExponent(text);
    if (!exponent)
        return std::nullopt;
    const double unit = PowerOfTen(mantissa->place + *exponent);
    const double magnitude = static_cast<double>(mantissa->digits) * unit;
    const double value = mantissa->negative ? -magnitude : magnitude;
    const double half = unit / 2 + magnitude * halfOfSeventhDigit;
    return NumberInterval{value - half, value + half};
}

NumberInterval AroundPlain(double value) {
    const double half = std::abs(value) * halfOfSeventhDigit;
    return {value - half, value + half};
}

} // namespace NumberText
