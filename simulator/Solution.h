#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

enum class Unit { ppm, mol_per_l, mmol_per_l, pH, mV };

std::string_view TextOf(Unit unit);

/// One thing that a solution holds: an ion by its electrode's name, the pH, or the potential that
/// a Redox electrode takes.
struct Ingredient {
    std::string name; ///< "Ca", "pH", "Redox"
    double amount = 0;
    Unit unit = Unit::ppm;
};

/// What a vessel holds. Without a pH it is neutral, without anything it is water.
struct Solution {
    std::vector<Ingredient> ingredients;

    /// Concentration in mol/l of the ion that an electrode responds to; 0 where it is absent. The
    /// hydrogen and the hydroxide ion follow each other and are never absent.
    double Concentration(std::string_view ion) const;

    /// Potential of a Redox electrode in mV; 0 where none was given.
    double Redox_mV() const;

    /// For example "Ca 10 ppm, pH 7".
    std::string Text() const;
};

} // namespace simulator
