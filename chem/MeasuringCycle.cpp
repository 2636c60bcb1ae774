#include "chem/MeasuringCycle.h"

#include "base/NumberText.h"

namespace MeasuringCycle {

namespace {

/// A cycle after its conversion.
struct Converted {
    std::array<std::int16_t, cyclePositions> selected{};
    std::array<float, cyclePositions> values{};
    Measure::ConversionFailures failures;
};

Converted Convert(const Source& source, std::span<const float, cyclePositions> averages) {
    Converted cycle;
    cycle.selected = Measure::SelectPositions(source.tables, source.selected, source.tempSensor);
    cycle.failures =
        Measure::ConvertReadings(source.tables, cycle.selected, averages, cycle.values);
    return cycle;
}

ChannelDisplay::ChannelState StateOf(const Source& source, const Converted& cycle,
                                     std::size_t channel, float potential_mV) {
    ChannelDisplay::ChannelState state;
    state.kind = Electrode::KindOf(source.tables.electrode[channel]);
    state.potential_mV = potential_mV;
    state.conversionFailed = cycle.failures[channel].has_value();
    if (cycle.selected[channel] != 0)
        state.converted = cycle.values[channel];
    state.stdUnit = source.tables.calibration[channel].StdUnit;
    state.molarMass_g_per_mol = source.molarMass_g_per_mol[channel];
    if (const auto position = SensorPosition(source.tempSensor[channel])) {
        state.temperatureFailed = cycle.failures[*position].has_value();
        state.temperature_celsius = cycle.values[*position];
    }
    return state;
}

std::string FirstProblem(const Measure::ConversionFailures& failures) {
    for (std::size_t i = 0; i < failures.size(); ++i) {
        if (!failures[i])
            continue;
        const bool electrode = i < maxChannels;
        const auto number = static_cast<std::int32_t>(electrode ? i : i - maxChannels) + 1;
        return (electrode ? "Converting channel " : "Converting temperature sensor ") +
               NumberText::Plain(number) + ": " + *failures[i];
    }
    return {};
}

} // namespace

Outcome Run(const Source& source, std::span<const float, cyclePositions> averages) {
    const Converted cycle = Convert(source, averages);
    Outcome outcome;
    for (std::size_t i = 0; i < maxChannels; ++i) {
        if (source.selected[i] == 0)
            continue;
        const auto state = StateOf(source, cycle, i, averages[i]);
        outcome.cells[i] = ChannelDisplay::Compose(state);
        outcome.values[i] = ChannelDisplay::ValuesOf(state);
    }
    outcome.problem = FirstProblem(cycle.failures);
    return outcome;
}

} // namespace MeasuringCycle
