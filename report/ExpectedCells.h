#pragma once

#include "base/Electrode.h"
#include "base/NumberInterval.h"
#include "base/Quantity.h"
#include "chem/CalibrationRecord.h"
#include "files/MeasurementHeader.h"

#include <optional>
#include <string>
#include <vector>

namespace Mreport {

/// A channel as a file's header tells it, for computing its values anew.
struct HeaderChannel {
    Electrode::Kind kind = Electrode::Kind::none;
    CalibrationRecord record;
    float molarMass_g_per_mol = 0; ///< the built-in one, for the header holds none; 0: none known
    std::string whyNot;            ///< why its values cannot be computed; empty where they can

    /// The unit that an ion's channel was not calibrated in, whose values need the molar mass.
    std::optional<Quantity> OtherUnit() const;
};

HeaderChannel ChannelOf(const FileOpr::MeasurementHeader& header, std::size_t channel);

/// What a cell may hold.
struct ExpectedCell {
    bool blank = false;
    bool error = false;                 ///< "Error"
    std::vector<NumberInterval> values; ///< of any of these
};

/// What the cells of a channel may hold beside this potential in mV, by the rules of conversion and
/// display. Of an ion's other unit: with the built-in molar mass.
PerQuantity<ExpectedCell> ExpectedCells(const HeaderChannel& channel,
                                        const NumberInterval& potential_mV);

/// "31.6", "31.5 to 31.7", "Error" or "no value".
std::string ExpectedText(const ExpectedCell& cell, Quantity quantity);

} // namespace Mreport
