#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as text: the one place that knows patterns, rounding and parsing. No locale changes any
/// of it. Patterns round half away from zero on the value's decimal text of seven significant
/// digits; a value that is no finite number is "NAN", "INF" or "-INF" in each of them.
namespace NumberText {

enum class Pattern {
    oneDecimal,  ///< "0.0"
    scientific,  ///< "0.00E+00"
    twoDecimals, ///< "0.00"
    frame,       ///< "000.0", at least three digits before the point
    percent,     ///< "0%"
};

/// The value in a pattern, for example 0.25 with oneDecimal as "0.3".
std::string Format(float value, Pattern pattern);

/// Up to seven significant digits, a point, no trailing zeros: 58.44, -123.4, 1E-05, 1E+10.
std::string Plain(float value);
std::string Plain(std::int32_t value);

/// The leading number of a text (leading blanks skipped, the rest ignored); 0 without one. Never
/// fails.
double Leading(std::string_view text);

/// The same as a single; beyond the singles the largest one.
float LeadingSingle(std::string_view text);

/// The leading number rounded to the nearest 16-bit integer, ties to even, clamped to the type's
/// range.
std::int16_t LeadingInteger(std::string_view text);

/// The number that the whole trimmed text is; nothing otherwise ("0,5" is no number).
std::optional<float> StrictSingle(std::string_view text);

/// The same as a 16-bit integer, ties to even; nothing when out of its range.
std::optional<std::int16_t> StrictInteger(std::string_view text);

} // namespace NumberText
