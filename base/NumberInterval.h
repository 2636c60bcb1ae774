#pragma once

#include <optional>
#include <string_view>

/// The numbers from `low` to `high`, both among them.
struct NumberInterval {
    double low = 0;
    double high = 0;

    bool Meets(const NumberInterval& other) const { return low <= other.high && other.low <= high; }
    bool Holds(double value) const { return low <= value && value <= high; }

    bool operator==(const NumberInterval&) const = default;
};

namespace NumberText {

/// The numbers that a text may stand for: half of its last digit to both sides, and half of the
/// seventh significant digit, to which a display rounds before it rounds to its pattern. Nothing
/// where the whole text is no number in digits, such as "-12.3" or "1.00E-03".
std::optional<NumberInterval> MeantBy(std::string_view text);

/// The numbers whose plain text of seven significant digits reads as this value.
NumberInterval AroundPlain(double value);

} // namespace NumberText
