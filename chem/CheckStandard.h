#pragma once

#include "base/Quantity.h"

#include <optional>
#include <string>
#include <string_view>

/// What a channel is calibrated in: mV, pH, ppm or mol/l.
Quantity CalibratedQuantity(std::string_view electrode, float stdUnit);

/// A reading held against the known value of a standard.
namespace CheckStandard {

/// Between which recoveries a check passes, in percent.
struct Bounds {
    float lowest_percent = 90;
    float highest_percent = 110;

    bool operator==(const Bounds&) const = default;
};

struct Outcome {
    float recovery_percent = 0; ///< to one decimal, as it is told
    bool passes = false;
};

/// Nothing for a standard of 0, of which nothing can be recovered.
std::optional<Outcome> Check(float reading, float standard, const Bounds& bounds);

/// "Recovery 98.2 %: pass (90 to 110 %)".
std::string Text(const Outcome& outcome, const Bounds& bounds);

} // namespace CheckStandard
