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
std::optional<float> OtherUnit(float (*change)(float, float), const ChannelState& channel) {
    if (channel.molarMass_g_per_mol == 0)
        return std::nullopt; // a concentration of 0 would be believed
    try {
        return change(*channel.converted, channel.molarMass_g_per_mol);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

void AddConcentrations(Values& values, const ChannelState& channel) {
    if (channel.stdUnit != 0) {
        values[Quantity::mol_l] = channel.converted;
        values[Quantity::ppm] = OtherUnit(Measure::ToPpm, channel);
    } else {
        values[Quantity::ppm] = channel.converted;
        values[Quantity::mol_l] = OtherUnit(Measure::ToMolPerLitre, channel);
    }
}

void ShowConcentrations(Cells& cells, const Values& values) {
    for (const Quantity unit : {Quantity::ppm, Quantity::mol_l})
        cells[unit] = values[unit] ? Reading(*values[unit]) : Error();
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

void ShowConverted(Cells& cells, const ChannelState& channel, const Values& values) {
    if (channel.conversionFailed)
        ShowFailure(cells, channel.kind);
    else if (!channel.converted)
        return;
    else if (*channel.converted < 0)
        ShowNegative(cells, channel);
    else if (channel.kind == Electrode::Kind::pH)
        cells[Quantity::pH] = TwoDecimals(*channel.converted);
    else if (channel.kind == Electrode::Kind::ion)
        ShowConcentrations(cells, values);
}

} // namespace

Values ValuesOf(const ChannelState& channel) {
    Values values;
    values[Quantity::mV] = channel.potential_mV;
    if (!channel.temperatureFailed)
        values[Quantity::celsius] = channel.temperature_celsius;
    if (channel.conversionFailed || !channel.converted || *channel.converted < 0)
        return values;
    if (channel.kind == Electrode::Kind::pH)
        values[Quantity::pH] = channel.converted;
    else if (channel.kind == Electrode::Kind::ion)
        AddConcentrations(values, channel);
    return values;
}

Cells Compose(const ChannelState& channel) {
    const Values values = ValuesOf(channel);
    Cells cells;
    cells[Quantity::mV] = Reading(channel.potential_mV);
    ShowConverted(cells, channel, values);
    if (channel.temperatureFailed)
        cells[Quantity::celsius] = Error();
    else if (channel.temperature_celsius)
        cells[Quantity::celsius] = Reading(*channel.temperature_celsius);
    return cells;
}

} // namespace ChannelDisplay
