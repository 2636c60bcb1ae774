#include "simulator/Solution.h"

#include "base/Electrode.h"
#include "simulator/Quantities.h"

#include <cmath>

namespace simulator {

namespace {

constexpr double ionProductOfWater = 1e-14; ///< (mol/l)² at 25 °C
constexpr double neutral_mol_per_l = 1e-7;

double MolPerLitre(const Ingredient& ingredient) {
    switch (ingredient.unit) {
    case Unit::ppm:
        return ingredient.amount / (1000.0 * double{Electrode::MolarMass(ingredient.name)});
    case Unit::mmol_per_l:
        return ingredient.amount / 1000.0;
    case Unit::pH:
        return std::pow(10.0, -ingredient.amount);
    case Unit::mol_per_l:
    case Unit::mV:
        break;
    }
    return ingredient.amount;
}

double Hydrogen(const Solution& solution) {
    for (const Ingredient& each : solution.ingredients) {
        if (each.unit == Unit::pH || each.name == "H")
            return MolPerLitre(each);
        if (each.name == "OH")
            return ionProductOfWater / MolPerLitre(each);
    }
    return neutral_mol_per_l;
}

} // namespace

std::string_view TextOf(Unit unit) {
    switch (unit) {
    case Unit::ppm:
        return "ppm";
    case Unit::mol_per_l:
        return "mol/l";
    case Unit::mmol_per_l:
        return "mmol/l";
    case Unit::pH:
        return "";
    case Unit::mV:
        return "mV";
    }
    return "";
}

double Solution::Concentration(std::string_view ion) const {
    if (ion == "H" || ion == Electrode::pHName)
        return Hydrogen(*this);
    if (ion == "OH")
        return ionProductOfWater / Hydrogen(*this);
    for (const Ingredient& each : ingredients) {
        if (each.name == ion)
            return MolPerLitre(each);
    }
    return 0;
}

double Solution::Redox_mV() const {
    for (const Ingredient& each : ingredients) {
        if (each.unit == Unit::mV)
            return each.amount;
    }
    return 0;
}

std::string Solution::Text() const {
    if (ingredients.empty())
        return "water";
    std::string text;
    for (const Ingredient& each : ingredients) {
        if (!text.empty())
            text += ", ";
        text += each.name + " " + Short(each.amount);
        if (each.unit != Unit::pH)
            text += " " + std::string(TextOf(each.unit));
    }
    return text;
}

} // namespace simulator
