#include "simulator/ElectrodeModel.h"

#include "base/Electrode.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator {

namespace {

constexpr double gasConstant_J_per_mol_K = 8.314462618;   // CODATA 2018
constexpr double faradayConstant_C_per_mol = 96485.33212; // CODATA 2018
constexpr double referenceIon_mol_per_l = 1e-3;
constexpr double referenceHydrogen_mol_per_l = 1e-7;
constexpr double least_mol_per_l = 1e-15; ///< keeps the logarithm finite without a detection limit
constexpr double secondsPerHour = 3600;

/// The charge that sets the slope. The electrode for dissolved NH3 holds a pH electrode behind its
/// membrane, and more NH3 lowers that one's potential.
int EffectiveCharge(std::string_view name) {
    return name == "NH3" ? -1 : Electrode::Charge(name);
}

} // namespace

ElectrodeTraits IdealTraits(std::string_view name) {
    ElectrodeTraits traits;
    traits.name = name;
    return traits;
}

ElectrodeTraits BelievableTraits(std::string_view name) {
    ElectrodeTraits traits = IdealTraits(name);
    const Electrode::Kind kind = Electrode::KindOf(name);
    if (kind == Electrode::Kind::none)
        return traits;
    traits.drift_mV_per_h = 0.4;
    traits.noise_mV = 0.1;
    traits.responseTime = Seconds(3);
    if (kind == Electrode::Kind::ion) {
        traits.efficiency = 0.97;
        traits.offset_mV = 40;
        traits.limit_mol_per_l = 1e-7;
    } else if (kind == Electrode::Kind::pH) {
        traits.efficiency = 0.985;
        traits.offset_mV = -6;
        traits.responseTime = Seconds(1.5);
    }
    return traits;
}

double NernstSlope(int charge, double temperature_C) {
    if (charge == 0)
        return 0;
    const double temperature_K = temperature_C - absoluteZero_C;
    const double volts = std::log(10.0) * gasConstant_J_per_mol_K * temperature_K /
                         (charge * faradayConstant_C_per_mol);
    return 1000.0 * volts;
}

ElectrodeModel::ElectrodeModel(ElectrodeTraits traits, const Solution& solution,
                               double temperature_C, Seconds now)
    : traits_(std::move(traits)), installed_(now), dipped_(now),
      start_mV_(EquilibriumIn(solution, temperature_C)), equilibrium_mV_(start_mV_) {}

void ElectrodeModel::Dip(const Solution& solution, double temperature_C, Seconds now) {
    start_mV_ = WithoutDrift(now);
    equilibrium_mV_ = EquilibriumIn(solution, temperature_C);
    dipped_ = now;
}

double ElectrodeModel::Potential(Seconds now) const {
    return WithoutDrift(now) + traits_.drift_mV_per_h * (now - installed_).count() / secondsPerHour;
}

double ElectrodeModel::Slope(double temperature_C) const {
    return traits_.efficiency * NernstSlope(EffectiveCharge(traits_.name), temperature_C);
}

double ElectrodeModel::EquilibriumIn(const Solution& solution, double temperature_C) const {
    double reference = referenceIon_mol_per_l;
    switch (Electrode::KindOf(traits_.name)) {
    case Electrode::Kind::none:
        return 0;
    case Electrode::Kind::redox:
        return traits_.offset_mV + solution.Redox_mV();
    case Electrode::Kind::pH:
        reference = referenceHydrogen_mol_per_l;
        break;
    case Electrode::Kind::ion:
        break;
    }
    const double concentration =
        std::max(least_mol_per_l, solution.Concentration(traits_.name) + traits_.limit_mol_per_l);
    return traits_.offset_mV + Slope(temperature_C) * std::log10(concentration / reference);
}

double ElectrodeModel::WithoutDrift(Seconds now) const {
    if (traits_.responseTime <= Seconds(0))
        return equilibrium_mV_;
    const double rest = std::exp(-(now - dipped_) / traits_.responseTime);
    return equilibrium_mV_ + (start_mV_ - equilibrium_mV_) * rest;
}

} // namespace simulator
