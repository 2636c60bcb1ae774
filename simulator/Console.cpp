#include "simulator/Console.h"

#include "base/Electrode.h"
#include "base/RunTimeError.h"
#include "simulator/CommandParser.h"

#include <utility>

namespace simulator {

namespace {

std::string ChannelText(int channel) {
    return "Channel " + std::to_string(channel + 1);
}

/// For example "slope 28.69 mV/decade", as a calibration should find it; empty where there is none.
std::string SlopeText(const ElectrodeModel& electrode, double temperature_C) {
    const double slope = electrode.Slope(temperature_C);
    switch (Electrode::KindOf(electrode.Traits().name)) {
    case Electrode::Kind::pH:
        return ", slope " + Fixed(-slope, 2) + " mV/pH";
    case Electrode::Kind::ion:
        return ", slope " + Fixed(slope, 2) + " mV/decade";
    case Electrode::Kind::redox:
    case Electrode::Kind::none:
        break;
    }
    return {};
}

/// The electrode responds to nothing that was put into the solution.
bool Misses(const Instrument& instrument, int channel) {
    const std::string& name = instrument.ElectrodeOf(channel).Traits().name;
    const Solution& solution = instrument.SolutionOf(channel);
    if (Electrode::KindOf(name) != Electrode::Kind::ion || solution.ingredients.empty())
        return false;
    return solution.Concentration(name) == 0;
}

} // namespace

Answer Console::Execute(std::string_view line, Seconds now) {
    const std::size_t begin = line.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos || line[begin] == '#')
        return {};
    try {
        const Command command = ParseCommand(line);
        return {true, std::visit([&](const auto& each) { return Run(each, now); }, command)};
    } catch (const RunTimeError& error) {
        return {false, error.what()};
    }
}

std::string Console::Run(const SetSolution& command, Seconds now) {
    for (int channel = command.channels.first; channel <= command.channels.last; ++channel)
        session_.Measuring().SetSolution(channel, command.solution, now);
    return Settling(command.channels);
}

std::string Console::Run(const SetTemperature& command, Seconds now) {
    for (int channel = command.channels.first; channel <= command.channels.last; ++channel)
        session_.Measuring().SetTemperature(channel, command.temperature_C, now);
    return Settling(command.channels);
}

std::string Console::Run(const SetElectrode& command, Seconds now) {
    ElectrodeTraits traits = session_.Measuring().DefaultTraits(command.name);
    traits.efficiency = command.slope_percent.value_or(100 * traits.efficiency) / 100;
    traits.offset_mV = command.offset_mV.value_or(traits.offset_mV);
    traits.responseTime = Seconds(command.response_s.value_or(traits.responseTime.count()));
    traits.drift_mV_per_h = command.drift_mV_per_h.value_or(traits.drift_mV_per_h);
    traits.noise_mV = command.noise_mV.value_or(traits.noise_mV);
    traits.limit_mol_per_l = command.limit_mol_per_l.value_or(traits.limit_mol_per_l);
    for (int channel = command.channels.first; channel <= command.channels.last; ++channel)
        session_.Measuring().SetElectrode(channel, traits, now);
    return Settling(command.channels);
}

std::string Console::Run(const SetFault& command, Seconds) {
    session_.SetFault(command.fault);
    return "Fault: " + command.fault.Text();
}

std::string Console::Run(const Unplug& command, Seconds) {
    if (!host_.Plugged())
        throw RunTimeError("The cable is out already");
    host_.Unplug(command.backAfter);
    if (!command.backAfter)
        return "The cable is out; type replug";
    return "The cable is out for " + Short(command.backAfter->count()) + " s";
}

std::string Console::Run(const Replug&, Seconds) {
    if (host_.Plugged())
        throw RunTimeError("The cable is in already");
    host_.Replug();
    return "The cable is in: " + host_.Place();
}

std::string Console::Run(const SetAutomatic& command, Seconds now) {
    session_.SetAutomatic(command.interval, now);
    if (!command.interval)
        return "Frames on request only";
    return "A frame every " + Short(command.interval->count()) + " s";
}

std::string Console::Run(const SetBitRate& command, Seconds) {
    host_.SetBitRate(command.bitRate);
    return "Line: " + std::to_string(session_.Sending().BitRate()) + " bit/s";
}

std::string Console::Run(const ShowStatus&, Seconds now) {
    return Status(now);
}

std::string Console::Run(const ShowHelp&, Seconds) {
    return CommandHelp();
}

std::string Console::Run(const Quit&, Seconds) {
    host_.Quit();
    return "Good bye";
}

std::string Console::Settling(const ChannelChoice& channels) const {
    const Instrument& instrument = session_.Measuring();
    std::string text;
    for (int channel = channels.first; channel <= channels.last; ++channel) {
        const ElectrodeModel& electrode = instrument.ElectrodeOf(channel);
        if (!text.empty())
            text += "\n";
        text += ChannelText(channel) + ", " + electrode.Traits().name + " electrode in " +
                instrument.SolutionOf(channel).Text() + ", " +
                Fixed(instrument.SensorOf(channel).Temperature(), 1) + " C: goes to " +
                Fixed(electrode.Equilibrium(), 1) + " mV";
        if (Misses(instrument, channel))
            text += " (nothing here that it responds to)";
    }
    return text;
}

std::string Console::Status(Seconds now) const {
    const Instrument& instrument = session_.Measuring();
    const Line& line = session_.Sending();
    std::string text = host_.Plugged() ? "On " + host_.Place() : "The cable is out";
    text += line.Fast() ? ", at once" : ", " + std::to_string(line.BitRate()) + " bit/s";
    text += "; " + std::to_string(session_.RequestsSeen()) + " requests, " +
            std::to_string(session_.FramesSent()) + " answers\n";
    text += session_.Automatic() ? "A frame every " + Short(session_.Automatic()->count()) + " s"
                                 : std::string("Frames on request only");
    text += "; fault: " + session_.CurrentFault().Text();
    for (int channel = 0; channel < channelCount; ++channel) {
        const ElectrodeModel& electrode = instrument.ElectrodeOf(channel);
        const TemperatureSensor& sensor = instrument.SensorOf(channel);
        text += "\n" + ChannelText(channel) + ", " + electrode.Traits().name + " electrode in " +
                instrument.SolutionOf(channel).Text() + ", " + Fixed(sensor.Temperature(), 1) +
                " C: " + Fixed(electrode.Potential(now), 1) + " mV" +
                SlopeText(electrode, sensor.Temperature()) + ", sensor " +
                Fixed(sensor.Reading(now), 1);
    }
    return text;
}

} // namespace simulator
