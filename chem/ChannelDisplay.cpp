#include "chem/ChannelDisplay.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "chem/Measure.h"

namespace ChannelDisplay {

namespace {

Cell Error() {
    return {"Error", true};
}
Cell Reading(float value) {
    return {Mcommon::FormatReading(value), false};
}
Cell TwoDecimals(float value) {
    return {NumberText::Format(value, NumberText::Pattern::twoDecimals), false};
}

/// The concentration in the unit that the channel was not calibrated in.
Cell OtherUnit(float (*change)(float, float), const ChannelState& channel) {
    if (channel.molarMass_g_per_mol == 0)
        return Error(); // a concentration of 0 would be believed
    try {
        return Reading(change(*channel.converted, channel.molarMass_g_per_mol));
    } catch (const RunTimeError&) {
        return Error();
    }
}

void ShowConcentrations(Cells& cells, const ChannelState& channel) {
    if (channel.stdUnit != 0) {
        cells[Quantity::mol_l] = Reading(*channel.converted);
        cells[Quantity::ppm] = OtherUnit(Measure::ToPpm, channel);
    } else {
        cells[Quantity::ppm] = Reading(*channel.converted);
        cells[Quantity::mol_l] = OtherUnit(Measure::ToMolPerLitre, channel);
    }
}

void ShowFailure(Cells& cells, Electrode::Kind kind) {
    if (kind == Electrode::Kind::pH)
        cells[Quantity::pH] = Error();
    if (kind == Electrode::Kind::ion)
        cells[Quantity::ppm] = cells[Quantity::mol_l] = Error();
}

void ShowNegative(Cells& cells, const ChannelState& channel) {
    if (channel.kind == Electrode::Kind::redox)
        cells[Quantity::pH] = TwoDecimals(*channel.converted);
    else if (channel.kind != Electrode::Kind::none)
        cells[Quantity::ppm] = cells[Quantity::mol_l] =
            Error(); // of a pH channel too: its pH cell stays blank
}

void ShowConverted(Cells& cells, const ChannelState& channel) {
    if (channel.conversionFailed)
        ShowFailure(cells, channel.kind);
    else if (!channel.converted)
        return;
    else if (*channel.converted < 0)
        ShowNegative(cells, channel);
    else if (channel.kind == Electrode::Kind::pH)
        cells[Quantity::pH] = TwoDecimals(*channel.converted);
    else if (channel.kind == Electrode::Kind::ion)
        ShowConcentrations(cells, channel);
}

} // namespace

Cells Compose(const ChannelState& channel) {
    Cells cells;
    cells[Quantity::mV] = Reading(channel.potential_mV);
    ShowConverted(cells, channel);
    if (channel.temperatureFailed)
        cells[Quantity::celsius] = Error();
    else if (channel.temperature_celsius)
        cells[Quantity::celsius] = Reading(*channel.temperature_celsius);
    return cells;
}

} // namespace ChannelDisplay
