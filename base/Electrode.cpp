#include "base/Electrode.h"

#include <algorithm>

namespace Electrode {

namespace {

/// Standard atomic weights, abridged to five figures, g/mol. Source: IUPAC Commission on Isotopic
/// Abundances and Atomic Weights, "Standard atomic weights of the elements 2021", Pure and
/// Applied Chemistry 94 (2022) 573.
namespace weight {
constexpr double H = 1.0080;
constexpr double C = 12.011;
constexpr double N = 14.007;
constexpr double O = 15.999;
constexpr double F = 18.998;
constexpr double Na = 22.990;
constexpr double S = 32.06;
constexpr double Cl = 35.45;
constexpr double K = 39.098;
constexpr double Ca = 40.078;
constexpr double Cu = 63.546;
constexpr double Br = 79.904;
constexpr double Ag = 107.87;
constexpr double Cd = 112.41;
constexpr double I = 126.90;
constexpr double Ba = 137.33;
constexpr double Hg = 200.59;
constexpr double Pb = 207.2;
} // namespace weight

struct Ion {
    double molarMass_g_per_mol;
    int charge;
};

/// In the order of `names`. Dissolved NH3 has no charge; Redox and None have neither figure.
constexpr std::array<Ion, names.size()> ions = {{
    {weight::Ag, 1},
    {weight::Ba, 2},
    {weight::Br, -1},
    {weight::Ca, 2},
    {weight::Cd, 2},
    {weight::Cl, -1},
    {weight::Cl + 4 * weight::O, -1},
    {weight::C + weight::N, -1},
    {weight::C + 3 * weight::O, -2},
    {weight::Cu, 2},
    {weight::F, -1},
    {weight::H, 1},
    {weight::Hg, 2},
    {weight::I, -1},
    {weight::K, 1},
    {weight::Na, 1},
    {weight::N + 3 * weight::H, 0},
    {weight::N + 4 * weight::H, 1},
    {weight::N + 2 * weight::O, -1},
    {weight::N + 3 * weight::O, -1},
    {weight::O + weight::H, -1},
    {weight::Pb, 2},
    {weight::S, -2},
    {weight::S + weight::C + weight::N, -1},
    {0, 1},
    {0, 0},
    {0, 0},
}};

Ion Find(std::string_view electrode) {
    const auto found = std::find(names.begin(), names.end(), electrode);
    if (found == names.end())
        return {0, 0};
    return ions[static_cast<std::size_t>(found - names.begin())];
}

} // namespace

Kind KindOf(std::string_view electrode) {
    if (electrode.find("Redox") != std::string_view::npos)
        return Kind::redox;
    if (electrode.find("(pH") != std::string_view::npos)
        return Kind::pH;
    if (electrode.empty() || electrode == noneName)
        return Kind::none;
    return Kind::ion;
}

float MolarMass(std::string_view electrode) {
    return static_cast<float>(Find(electrode).molarMass_g_per_mol);
}

int Charge(std::string_view electrode) {
    return Find(electrode).charge;
}

} // namespace Electrode
