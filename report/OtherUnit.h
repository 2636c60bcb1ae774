#pragma once

#include "base/NumberInterval.h"
#include "report/ExpectedCells.h"
#include "report/MassFit.h"
#include "report/VerifyResult.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Mreport {

/// Judges the values of the unit that an ion's channel was not calibrated in. They were computed
/// with a molar mass that the file does not tell, so that the verdict is given at the end.
class OtherUnit {
public:
    /// What is expected with the built-in mass, and in the unit that was calibrated in.
    struct Expected {
        const ExpectedCell& builtIn;
        const ExpectedCell& calibrated;
    };

    /// Takes a recorded cell, a blank one too where a value is due.
    void Take(const RecordedCell& cell, const HeaderChannel& rules, const Expected& expected);

    /// Adds the verdict on all that was taken.
    void Finish(std::size_t channel, const HeaderChannel& rules, VerifyResult& result) const;

private:
    struct Exceptions {
        std::int64_t count = 0;
        std::vector<Divergence> listed;

        void Add(const RecordedCell& cell, const ExpectedCell& expected);
        void AddTo(VerifyResult& result) const;
    };

    bool IsExplained(std::string_view cell, const std::optional<NumberInterval>& meant,
                     const HeaderChannel& rules, const Expected& expected);

    std::int64_t taken_ = 0;
    std::int64_t withoutMass_ = 0; ///< "Error", as where the setup held no mass
    Exceptions ofBuiltIn_;         ///< not explained by the built-in mass
    MassFit mass_;                 ///< the mass that explains what is not among the next
    Exceptions ofMass_;
};

} // namespace Mreport
