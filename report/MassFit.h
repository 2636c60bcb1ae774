#pragma once

#include "base/NumberInterval.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace Mreport {

/// Which molar mass explains the values of a unit that was computed with one.
class MassFit {
public:
    /// Takes what masses (g/mol) explain a value. False where none of them explains those before.
    bool Take(const NumberInterval& masses) {
        const NumberInterval both{std::max(masses_.low, masses.low),
                                  std::min(masses_.high, masses.high)};
        if (both.low > both.high)
            return false;
        masses_ = both;
        ++taken_;
        return true;
    }

    std::int64_t Taken() const { return taken_; }

    /// The mass with the fewest digits among those that explain all values taken; nothing where no
    /// value or none that tells was taken.
    std::optional<std::string> Text() const;

private:
    NumberInterval masses_{0, std::numeric_limits<double>::infinity()};
    std::int64_t taken_ = 0;
};

} // namespace Mreport
