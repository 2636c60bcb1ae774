#include "base/NumberText.h"

#include "base/Letters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace NumberText {

namespace {

constexpr int significantDigits = 7;
constexpr std::uint32_t smallestMantissa = 1'000'000; ///< of a seven-digit mantissa
constexpr std::uint32_t largestMantissa = 9'999'999;

/// A value's decimal text of seven significant digits: mantissa * 10^(exponent - 6), so the first
/// digit counts 10^exponent. The mantissa of 0 is 0.
struct Decimal {
    bool negative = false;
    std::uint32_t mantissa = 0;
    int exponent = 0;
};

constexpr std::array<double, 13> powersOfTen = {1e0, 1e1, 1e2, 1e3,  1e4,  1e5, 1e6,
                                                1e7, 1e8, 1e9, 1e10, 1e11, 1e12};

/// Rounds half away from zero, carrying into the exponent.
Decimal Rounded(bool negative, std::uint64_t truncated, bool up, int exponent) {
    std::uint64_t mantissa = truncated + (up ? 1 : 0);
    if (mantissa > largestMantissa) {
        mantissa /= 10;
        ++exponent;
    }
    return {negative, static_cast<std::uint32_t>(mantissa), exponent};
}

/// From the exact digits, for magnitudes beyond the reach of exact multiplication. Twenty digits
/// decide: no single comes closer to a half of the seventh digit without being one.
Decimal FromDigits(float magnitude, bool negative) {
    constexpr int digitsBehindPoint = 19;
    std::array<char, 40> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), static_cast<double>(magnitude),
                      std::chars_format::scientific, digitsBehindPoint);
    std::uint64_t truncated = static_cast<std::uint64_t>(text[0] - '0');
    for (std::size_t i = 2; i <= significantDigits; ++i) // behind the point
        truncated = truncated * 10 + static_cast<std::uint64_t>(text[i] - '0');
    int exponent = 0;
    const char* exponentText = text.data() + 1 + 1 + digitsBehindPoint + 1; // behind the "e"
    std::from_chars(exponentText + (*exponentText == '+' ? 1 : 0), result.ptr, exponent);
    return Rounded(negative, truncated, text[significantDigits + 1] >= '5', exponent);
}

Decimal ToDecimal(float value) {
    const bool negative = std::signbit(value) && value != 0;
    const float magnitude = std::fabs(value);
    if (magnitude == 0)
        return {};
    constexpr float smallestExact = 1e-4F;
    constexpr float largestExact = 1e6F;
    if (magnitude < smallestExact || magnitude >= largestExact)
        return FromDigits(magnitude, negative);
    // 24 bits of the single and at most 28 of 5^12: the product is exact in a double.
    const auto exact = static_cast<double>(magnitude);
    int exponent = significantDigits - 1;
    double scaled = exact;
    while (scaled < smallestMantissa) {
        --exponent;
        scaled = exact * powersOfTen[static_cast<std::size_t>(significantDigits - 1 - exponent)];
    }
    const double truncated = std::floor(scaled);
    return Rounded(negative, static_cast<std::uint64_t>(truncated), scaled - truncated >= 0.5,
                   exponent);
}

/// The text of a value that is no finite number.
std::string NotFinite(float value) {
    if (std::isnan(value))
        return "NAN";
    return value < 0 ? "-INF" : "INF";
}

/// All digits of the decimal in fixed notation, without a point, for the place 10^lowestPlace and
/// above, rounded half away from zero there.
std::string RoundedDigits(const Decimal& decimal, int lowestPlace) {
    const int lastDigitPlace = decimal.exponent - (significantDigits - 1);
    if (decimal.mantissa == 0)
        return "0";
    if (lastDigitPlace >= lowestPlace) {
        std::string digits = std::to_string(decimal.mantissa);
        digits.append(static_cast<std::size_t>(lastDigitPlace - lowestPlace), '0');
        return digits;
    }
    const int dropped = lowestPlace - lastDigitPlace;
    if (dropped > significantDigits)
        return "0";
    std::uint32_t divisor = 1;
    for (int i = 0; i < dropped; ++i)
        divisor *= 10;
    return std::to_string((decimal.mantissa + divisor / 2) / divisor);
}

/// With `decimals` digits behind the point and at least `leading` before it. The sign stays even
/// where no digit does: an analyst sees on which side of zero a reading is.
std::string Fixed(const Decimal& decimal, std::size_t decimals, std::size_t leading) {
    std::string text = RoundedDigits(decimal, -static_cast<int>(decimals));
    const std::size_t width = leading + decimals;
    if (text.size() < width)
        text.insert(0, width - text.size(), '0');
    if (decimals > 0)
        text.insert(text.size() - decimals, ".");
    if (decimal.negative)
        text.insert(0, "-");
    return text;
}

void AppendExponent(std::string& text, int exponent) {
    text += exponent < 0 ? "E-" : "E+";
    const int magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude < 10)
        text += '0';
    text += std::to_string(magnitude);
}

std::string Scientific(const Decimal& decimal) {
    constexpr std::uint32_t unitOfThirdDigit = 10'000;
    std::uint32_t digits = (decimal.mantissa + unitOfThirdDigit / 2) / unitOfThirdDigit;
    int exponent = decimal.exponent;
    if (digits > 999) {
        digits /= 10;
        ++exponent;
    }
    std::string text = decimal.negative ? "-" : "";
    text += static_cast<char>('0' + digits / 100);
    text += '.';
    text += static_cast<char>('0' + digits / 10 % 10);
    text += static_cast<char>('0' + digits % 10);
    AppendExponent(text, exponent);
    return text;
}

std::string Percent(float value, Decimal decimal) {
    // The value itself decides below half a percent, where its seven digits already read 0.005.
    if (static_cast<double>(std::fabs(value)) < 0.005)
        decimal.mantissa = 0;
    decimal.exponent += 2;
    return Fixed(decimal, 0, 1) + "%";
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::size_t SkipDigits(std::string_view text, std::size_t from) {
    while (from < text.size() && Letters::IsDigit(text[from]))
        ++from;
    return from;
}

/// Length of the number at the start of the text: sign, digits with at most one point, exponent;
/// 0 without a digit.
std::size_t NumberLength(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::size_t end = SkipDigits(text, sign);
    std::size_t digits = end - sign;
    if (end < text.size() && text[end] == '.') {
        const std::size_t afterPoint = SkipDigits(text, end + 1);
        digits += afterPoint - end - 1;
        end = afterPoint;
    }
    if (digits == 0)
        return 0;
    if (end < text.size() && (text[end] == 'E' || text[end] == 'e')) {
        std::size_t power = end + 1;
        if (power < text.size() && (text[power] == '+' || text[power] == '-'))
            ++power;
        const std::size_t powerEnd = SkipDigits(text, power);
        if (powerEnd > power)
            end = powerEnd;
    }
    return end;
}

/// True when a text that NumberLength accepted, and that no double can hold, is too large for it
/// rather than too small.
bool IsBeyondLargest(std::string_view number) {
    const auto exponentMark = number.find_first_of("Ee");
    const std::string_view mantissa = number.substr(0, exponentMark);
    const auto first = static_cast<long long>(mantissa.find_first_of("123456789"));
    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    long long power = 0;
    if (exponentMark != std::string_view::npos) {
        std::string_view digits = number.substr(exponentMark + 1);
        const bool negative = digits.front() == '-';
        if (digits.front() == '+')
            digits.remove_prefix(1);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), power);
        if (result.ec == std::errc::result_out_of_range)
            return !negative;
    }
    return power > first - point;
}

/// The value of a text that is a number from end to end; beyond the doubles the largest one, or 0.
double ValueOf(std::string_view number) {
    if (number.front() == '+')
        number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    if (!IsBeyondLargest(number))
        return 0;
    const double largest = std::numeric_limits<double>::max();
    return number.front() == '-' ? -largest : largest;
}

/// Ties to even, whatever rounding the process has set.
double RoundedToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    return up ? below + 1 : below;
}

/// The value of the whole trimmed text, nothing where it is no number.
std::optional<double> StrictDouble(std::string_view text) {
    const std::string number = Letters::TrimControl(text);
    if (number.empty() || NumberLength(number) != number.size())
        return std::nullopt;
    return ValueOf(number);
}

} // namespace

std::string Format(float value, Pattern pattern) {
    if (!std::isfinite(value))
        return NotFinite(value);
    const Decimal decimal = ToDecimal(value);
    switch (pattern) {
    case Pattern::oneDecimal:
        return Fixed(decimal, 1, 1);
    case Pattern::twoDecimals:
        return Fixed(decimal, 2, 1);
    case Pattern::frame:
        return Fixed(decimal, 1, 3);
    case Pattern::percent:
        return Percent(value, decimal);
    case Pattern::scientific:
        break;
    }
    return Scientific(decimal);
}

std::string Plain(float value) {
    if (!std::isfinite(value))
        return NotFinite(value);
    const Decimal decimal = ToDecimal(value);
    if (decimal.mantissa == 0)
        return "0";
    std::string digits = std::to_string(decimal.mantissa);
    digits.resize(digits.find_last_not_of('0') + 1);
    const auto count = static_cast<int>(digits.size());
    constexpr int lowestFixedExponent = -4;
    if (decimal.exponent < lowestFixedExponent || decimal.exponent >= significantDigits) {
        if (count > 1)
            digits.insert(1, ".");
        AppendExponent(digits, decimal.exponent);
    } else if (decimal.exponent < 0) {
        digits.insert(0, "0." + std::string(static_cast<std::size_t>(-decimal.exponent - 1), '0'));
    } else if (count <= decimal.exponent + 1) {
        digits.append(static_cast<std::size_t>(decimal.exponent + 1 - count), '0');
    } else {
        digits.insert(static_cast<std::size_t>(decimal.exponent) + 1, ".");
    }
    return decimal.negative ? "-" + digits : digits;
}

std::string Plain(std::int32_t value) {
    return std::to_string(value);
}

double Leading(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    const std::size_t length = NumberLength(text);
    return length == 0 ? 0 : ValueOf(text.substr(0, length));
}

float LeadingSingle(std::string_view text) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(Leading(text), -largest, largest));
}

std::int16_t LeadingInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int16_t>;
    const double rounded = RoundedToEven(Leading(text));
    return static_cast<std::int16_t>(std::clamp<double>(rounded, Limits::lowest(), Limits::max()));
}

std::optional<float> StrictSingle(std::string_view text) {
    const auto value = StrictDouble(text);
    if (!value || std::fabs(*value) > static_cast<double>(std::numeric_limits<float>::max()))
        return std::nullopt;
    return static_cast<float>(*value);
}

std::optional<std::int16_t> StrictInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int16_t>;
    const auto value = StrictDouble(text);
    if (!value)
        return std::nullopt;
    const double rounded = RoundedToEven(*value);
    if (rounded < Limits::lowest() || rounded > Limits::max())
        return std::nullopt;
    return static_cast<std::int16_t>(rounded);
}

} // namespace NumberText
