#pragma once

#include "base/Electrode.h"
#include "base/Quantity.h"

#include <optional>
#include <string>

/// What the measuring page shows for one selected channel.
namespace ChannelDisplay {

struct Cell {
    std::string text;   ///< empty for a blank cell
    bool error = false; ///< "Error": the cell is marked by more than its colour

    bool operator==(const Cell&) const = default;
};
using Cells = PerQuantity<Cell>;

/// One cycle's outcome for a channel.
struct ChannelState {
    Electrode::Kind kind = Electrode::Kind::none;
    float potential_mV = 0;
    /// What the conversion gave; nothing when the channel was not handed to it.
    std::optional<float> converted;
    bool conversionFailed = false; ///< whatever `converted` holds
    float stdUnit = 0;             ///< 0: `converted` is in ppm, otherwise in mol/l
    float molarMass_g_per_mol = 0; ///< 0: unknown, the other unit cannot be given
    /// The temperature of the channel's sensor; nothing when it has none.
    std::optional<float> temperature_celsius;
    bool temperatureFailed = false; ///< whatever `temperature_celsius` holds
};

/// The numbers behind the cells; nothing where a cell is blank or says "Error".
using Values = PerQuantity<std::optional<float>>;

Values ValuesOf(const ChannelState& channel);

/// The five cells. A concentration beyond single precision, or one that needs an unknown molar
/// mass, shows "Error" in its own cell alone.
Cells Compose(const ChannelState& channel);

} // namespace ChannelDisplay
