#include "simulator/CommandParser.h"

#include "base/Electrode.h"
#include "base/Letters.h"
#include "base/RunTimeError.h"
#include "simulator/LineSpeed.h"
#include "simulator/Words.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

constexpr double leastTemperature_C = -10;
constexpr double mostTemperature_C = 100;
constexpr double most_mV = 10000;
constexpr double mostSeconds = 86400;
constexpr double leastInterval_s = 0.001;
constexpr int mostReplies = 1000000;

ChannelChoice TakeChannels(Words& words) {
    if (words.TakeIf("all"))
        return {0, channelCount - 1};
    if (words.AtEnd() || !words.NumberFollows())
        throw RunTimeError("A channel is missing: 1 to 4, or all");
    const int channel = words.TakeInteger("Channel", 1, channelCount) - 1;
    return {channel, channel};
}

Seconds TakeSeconds(Words& words, std::string_view what, double least) {
    return Seconds(words.TakeNumber(what, least, mostSeconds));
}

/// A name of the electrode list as it stands there; "pH" is "H (pH)", which also comes as two
/// words.
std::string TakeElectrodeName(Words& words) {
    const std::string word = words.Take("The electrode's name");
    if (Letters::SameText(word, "pH") || (Letters::SameText(word, "H") && words.TakeIf("(pH)")))
        return std::string(Electrode::pHName);
    const auto known = std::ranges::find_if(Electrode::types, [&](const Electrode::Type& type) {
        return Letters::SameText(type.name, word);
    });
    if (known != Electrode::types.end())
        return std::string(known->name);
    std::string list;
    for (const Electrode::Type& type : Electrode::types)
        list += (list.empty() ? "" : ", ") + std::string(type.name);
    throw RunTimeError("\"" + word + "\" is no electrode; there are " + list);
}

Unit TakeConcentrationUnit(Words& words, const std::string& ion) {
    for (Unit unit : {Unit::ppm, Unit::mol_per_l, Unit::mmol_per_l}) {
        if (words.TakeIf(TextOf(unit)))
            return unit;
    }
    throw RunTimeError("The unit of " + ion + " is missing: ppm, mol/l or mmol/l");
}

Ingredient TakeIngredient(Words& words) {
    const std::string name = TakeElectrodeName(words);
    if (name == Electrode::noneName)
        throw RunTimeError("\"None\" is nothing that a solution could hold");
    if (name == Electrode::pHName)
        return {"pH", words.TakeNumber("pH", -1, 15), Unit::pH};
    if (name == Electrode::redoxName) {
        const double potential = words.TakeNumber("Redox potential in mV", -most_mV, most_mV);
        words.TakeIf("mV");
        return {name, potential, Unit::mV};
    }
    constexpr double least = 1e-12;
    constexpr double most = 1e6;
    const double amount = words.TakeNumber("Concentration of " + name, least, most);
    return {name, amount, TakeConcentrationUnit(words, name)};
}

Command ParseSolution(Words& words) {
    SetSolution command{TakeChannels(words), {}};
    if (words.TakeIf("water"))
        return command;
    do {
        command.solution.ingredients.push_back(TakeIngredient(words));
    } while (!words.AtEnd());
    return command;
}

Command ParseTemperature(Words& words) {
    const ChannelChoice channels = TakeChannels(words);
    return SetTemperature{channels, words.TakeNumber("Temperature in degrees Celsius",
                                                     leastTemperature_C, mostTemperature_C)};
}

Command ParseElectrode(Words& words) {
    SetElectrode command;
    command.channels = TakeChannels(words);
    command.name = TakeElectrodeName(words);
    while (!words.AtEnd()) {
        if (words.TakeIf("slope"))
            command.slope_percent = words.TakeNumber("Slope in percent", 0, 200);
        else if (words.TakeIf("offset"))
            command.offset_mV = words.TakeNumber("Offset in mV", -most_mV, most_mV);
        else if (words.TakeIf("response"))
            command.response_s = words.TakeNumber("Response time in seconds", 0, mostSeconds);
        else if (words.TakeIf("drift"))
            command.drift_mV_per_h = words.TakeNumber("Drift in mV/h", -most_mV, most_mV);
        else if (words.TakeIf("noise"))
            command.noise_mV = words.TakeNumber("Noise in mV", 0, most_mV);
        else if (words.TakeIf("limit"))
            command.limit_mol_per_l = words.TakeNumber("Detection limit in mol/l", 0, 1);
        else
            throw RunTimeError("\"" + std::string(words.Peek()) +
                               "\" is not understood; an electrode has slope, offset, response, "
                               "drift, noise and limit, each followed by a number");
    }
    return command;
}

const FaultName& TakeFaultName(Words& words) {
    const std::string word = words.Take("The kind of fault");
    std::string list;
    for (const FaultName& each : FaultNames()) {
        if (Letters::SameText(each.name, word))
            return each;
        list += (list.empty() ? "" : ", ") + std::string(each.name);
    }
    throw RunTimeError("\"" + word + "\" is no fault; there are " + list);
}

Command ParseFault(Words& words) {
    const FaultName& name = TakeFaultName(words);
    SetFault command;
    command.fault.kind = name.kind;
    if (name.takesSeconds) {
        command.fault.time = Seconds(name.kind == FaultKind::delay ? 1.0 : 0.2);
        if (words.NumberFollows())
            command.fault.time = TakeSeconds(words, "Seconds", 0);
    }
    if (words.TakeIf("times"))
        command.fault.replies = words.TakeInteger("Times", 1, mostReplies);
    else if (name.kind == FaultKind::unplug)
        command.fault.replies = 1; // a cable is pulled once; after "replug" all is well again
    return command;
}

Command ParseUnplug(Words& words) {
    if (words.AtEnd())
        return Unplug{};
    return Unplug{TakeSeconds(words, "Seconds until the cable is back", 0)};
}

Command ParseAutomatic(Words& words) {
    if (words.TakeIf("off"))
        return SetAutomatic{};
    return SetAutomatic{TakeSeconds(words, "Seconds between frames", leastInterval_s)};
}

Command ParseBitRate(Words& words) {
    if (words.TakeIf("auto"))
        return SetBitRate{};
    return SetBitRate{ParseBitRateText(words.Take("The bit rate"))};
}

struct Verb {
    std::string_view name;
    Command (*parse)(Words& words);
    std::string_view help;
};

template <typename Plain>
Command WithoutArguments(Words&) {
    return Plain{};
}

constexpr std::array<Verb, 11> verbs = {{
    {"solution", ParseSolution,
     "solution CHANNEL|all CONTENT...    put an electrode into another solution; CONTENT is\n"
     "                                   ION AMOUNT ppm|mol/l|mmol/l, pH VALUE, Redox VALUE mV\n"
     "                                   (several may follow each other), or water\n"},
    {"temperature", ParseTemperature,
     "temperature CHANNEL|all CELSIUS    warm or cool the vessel\n"},
    {"electrode", ParseElectrode,
     "electrode CHANNEL|all NAME [slope PERCENT] [offset MV] [response SECONDS]\n"
     "          [drift MV/H] [noise MV] [limit MOL/L]\n"
     "                                   plug in another electrode: Ca, pH, Redox, None...\n"},
    {"fault", ParseFault, "fault KIND [SECONDS] [times N]     spoil the answers; KIND is\n"},
    {"unplug", ParseUnplug,
     "unplug [SECONDS]                   pull the cable, put it back after SECONDS\n"},
    {"replug", WithoutArguments<Replug>, "replug                             put the cable back\n"},
    {"auto", ParseAutomatic, "auto SECONDS|off                   send frames unasked\n"},
    {"bitrate", ParseBitRate,
     "bitrate RATE|auto                  speed of the line; auto: as the program sets it\n"},
    {"status", WithoutArguments<ShowStatus>,
     "status                             what stands where, and what it shows\n"},
    {"help", WithoutArguments<ShowHelp>, "help                               this list\n"},
    {"quit", WithoutArguments<Quit>, "quit                               end\n"},
}};

} // namespace

Command ParseCommand(std::string_view line) {
    Words words(line);
    const std::string name = words.Take("The command");
    for (const Verb& verb : verbs) {
        if (!Letters::SameText(verb.name, name))
            continue;
        Command command = verb.parse(words);
        words.ExpectEnd();
        return command;
    }
    throw RunTimeError("\"" + name + "\" is no command; type help");
}

std::string CommandHelp() {
    std::string help;
    for (const Verb& verb : verbs) {
        help += verb.help;
        if (verb.name != "fault")
            continue;
        constexpr std::size_t nameWidth = 9;
        for (const FaultName& fault : FaultNames()) {
            const std::string padding(nameWidth - fault.name.size(), ' ');
            help += std::string(37, ' ') + std::string(fault.name) + padding +
                    std::string(fault.meaning) + "\n";
        }
    }
    help.pop_back();
    return help;
}

} // namespace simulator
