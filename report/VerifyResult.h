#pragma once

#include "base/Quantity.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// A recorded value at hand; the texts live as long as its record.
struct RecordedCell {
    std::uint64_t offset = 0; ///< of the record's first line
    std::int64_t place = 0;   ///< of the record in the run, from 0
    std::int32_t number = 0;  ///< of the record
    std::size_t channel = 0;  ///< from 0
    Quantity quantity = Quantity::pH;
    std::string_view potential;
    std::string_view text; ///< of the cell, without blanks around it
};

/// A value that the header's calibration does not give for the record's potential.
struct Divergence {
    Divergence(const RecordedCell& cell, std::string expectedText);

    std::uint64_t offset; ///< of the record's first line
    std::int64_t place;   ///< of the record in the run, from 0
    std::int32_t number;  ///< of the record
    std::size_t channel;  ///< from 0
    Quantity quantity;
    std::string potential; ///< as recorded
    std::string recorded;  ///< the cell; empty for none
    std::string expected;  ///< "31.6", "31.5 to 31.7", "no value" ...

    bool operator==(const Divergence&) const = default;
};

/// Values that nothing in the file allows to compute.
struct NotComputed {
    std::size_t channel = 0;
    Quantity quantity = Quantity::pH;
    std::string why;
    std::int64_t count = 0;
};

struct VerifyResult {
    /// Divergences kept for a list; nobody reads more.
    static constexpr std::size_t mostListed = 1000;

    std::int64_t records = 0;
    std::int64_t reproduced = 0;
    std::int64_t diverged = 0;
    std::int64_t notComputed = 0;
    std::vector<Divergence> divergences; ///< in the file's order; `diverged` counts all
    std::vector<NotComputed> reasons;

    void AddDiverged(Divergence divergence);
    void AddNotComputed(std::size_t channel, Quantity quantity, const std::string& why,
                        std::int64_t count = 1);
};

/// "Chan 2"
std::string ChannelName(std::size_t channel);

/// "1,204 records, 3,612 values: 3,610 reproduced, 2 diverged, none not to be computed."
std::string VerdictText(const VerifyResult& result);

/// "Chan 2 mol/l: 604,800 not to be computed: they fit 40.1 g/mol, the built-in mass is 40.078"
std::string ReasonText(const NotComputed& reason);

/// 604800 as "604,800".
std::string Grouped(std::int64_t count);

} // namespace Mreport
