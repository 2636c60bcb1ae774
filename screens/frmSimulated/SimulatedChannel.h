#pragma once

#include <QString>
#include <QStringList>

/// What the window of the simulated instrument holds for a channel, as texts: the simulator is the
/// judge of them.
struct SimulatedChannel {
    QString electrode;     ///< a name of the setup page's list
    QString content;       ///< what its solution holds: an ion, "H (pH)", "Redox" or "water"
    QString amount;        ///< of the content: concentration, pH or mV
    QString unit;          ///< of an ion: "ppm", "mol/l", "mmol/l"
    QString temperature_C; ///< of electrode and sensor
};

namespace Simulated {

inline const QString water = QStringLiteral("water");

/// The electrode of the setup page in a solution of ordinary strength at 25 °C; where the setup
/// page has none, one of those that stand in tap water.
SimulatedChannel AtStart(std::size_t channel, const QString& setupElectrode);

/// A solution of ordinary strength for an electrode.
void Dip(SimulatedChannel& channel);

/// The units that the amount of a content can have; none for pH, Redox and water.
QStringList UnitsOf(const QString& content);

/// The commands that bring a channel (from 0) there: electrode, solution, temperature.
QStringList CommandsFor(std::size_t channel, const SimulatedChannel& wanted);

/// What a command is about, "electrode 1"; a later one of the same subject replaces it.
QString SubjectOf(const QString& command);

} // namespace Simulated
