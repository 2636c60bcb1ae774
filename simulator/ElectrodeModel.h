#pragma once

#include "simulator/Quantities.h"
#include "simulator/Solution.h"

#include <string>

namespace simulator {

/// What tells one electrode from another.
struct ElectrodeTraits {
    std::string name;           ///< one of Electrode::types
    double efficiency = 1;      ///< share of the Nernst slope that it shows
    double offset_mV = 0;       ///< potential at 1 mmol/l, of a pH electrode at pH 7
    Seconds responseTime{0};    ///< time constant; after three of them 95 % of a change is done
    double drift_mV_per_h = 0;  ///< steady wandering of the potential
    double noise_mV = 0;        ///< standard deviation of a single reading
    double limit_mol_per_l = 0; ///< detection limit: what it shows of a solution without its ion
};

/// A used but sound electrode of that name.
ElectrodeTraits BelievableTraits(std::string_view name);

/// The same without offset, drift, noise, detection limit and waiting, at the full Nernst slope.
ElectrodeTraits IdealTraits(std::string_view name);

/// Ideal slope in mV per decade: 59.16 for a single positive charge at 25 °C, negative for anions.
/// 0 for a charge of 0.
double NernstSlope(int charge, double temperature_C);

/// An electrode in a solution. Its potential goes to the solution's exponentially; noise is not
/// part of it.
class ElectrodeModel {
public:
    /// An electrode that has stood in the solution for long.
    ElectrodeModel(ElectrodeTraits traits, const Solution& solution, double temperature_C,
                   Seconds now);

    void Dip(const Solution& solution, double temperature_C, Seconds now);

    /// In mV, drift included.
    double Potential(Seconds now) const;

    /// Where the potential goes to in mV, without the drift.
    double Equilibrium() const { return equilibrium_mV_; }

    /// Its own slope at a temperature in mV per decade of its ion; of a pH electrode, the hydrogen
    /// ion, so that it falls by this for each pH.
    double Slope(double temperature_C) const;

    const ElectrodeTraits& Traits() const { return traits_; }

private:
    double EquilibriumIn(const Solution& solution, double temperature_C) const;
    double WithoutDrift(Seconds now) const;

    ElectrodeTraits traits_;
    Seconds installed_;
    Seconds dipped_;
    double start_mV_;
    double equilibrium_mV_;
};

} // namespace simulator
