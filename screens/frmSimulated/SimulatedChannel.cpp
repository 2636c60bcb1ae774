#include "screens/frmSimulated/SimulatedChannel.h"

#include "base/Electrode.h"
#include "platform/qt/Text.h"

#include <array>

namespace Simulated {

namespace {

/// Those that the simulated instrument begins with by itself.
const std::array<const char*, 4> ordinaryElectrodes = {"Ca", "H (pH)", "NO3", "Redox"};

} // namespace

SimulatedChannel AtStart(std::size_t channel, const QString& setupElectrode) {
    const bool none = Electrode::KindOf(Text::FromQt(setupElectrode)) == Electrode::Kind::none;
    SimulatedChannel made;
    made.electrode = none ? ordinaryElectrodes.at(channel) : setupElectrode;
    made.temperature_C = "25";
    Dip(made);
    return made;
}

void Dip(SimulatedChannel& channel) {
    channel.content = channel.electrode;
    channel.unit.clear();
    switch (Electrode::KindOf(Text::FromQt(channel.electrode))) {
    case Electrode::Kind::pH:
        channel.amount = "7";
        break;
    case Electrode::Kind::redox:
        channel.amount = "220";
        break;
    case Electrode::Kind::none:
        channel.content = water;
        channel.amount.clear();
        break;
    case Electrode::Kind::ion:
        channel.amount = "10";
        channel.unit = "ppm";
        break;
    }
}

QStringList UnitsOf(const QString& content) {
    if (content == water || Electrode::KindOf(Text::FromQt(content)) != Electrode::Kind::ion)
        return {};
    return {"ppm", "mol/l", "mmol/l"};
}

QStringList CommandsFor(std::size_t channel, const SimulatedChannel& wanted) {
    const QString number = " " + QString::number(channel + 1) + " ";
    QString solution = "solution" + number + wanted.content;
    if (wanted.content != water)
        solution += " " + wanted.amount.simplified() + " " + wanted.unit;
    return {"electrode" + number + wanted.electrode, solution.trimmed(),
            "temperature" + number + wanted.temperature_C.simplified()};
}

QString SubjectOf(const QString& command) {
    return command.section(' ', 0, 1);
}

} // namespace Simulated
