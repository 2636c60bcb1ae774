#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// The electrode types that a channel can have, and what their names tell.
namespace Electrode {

enum class Kind { none = 0, redox = 1, pH = 2, ion = 3 };

/// One entry of the setup page's list.
struct Type {
    std::string_view name;
    double molarMass_g_per_mol; ///< of the ion; 0 where it does not apply
    int charge;                 ///< signed charge number; 0 where there is none or it is not known
};

inline constexpr std::string_view noneName = "None";
inline constexpr std::string_view redoxName = "Redox";
inline constexpr std::string_view pHName = "H (pH)";

/// Standard atomic weights, abridged to five figures, g/mol. Source: IUPAC Commission on Isotopic
/// Abundances and Atomic Weights, "Standard atomic weights of the elements 2021", Pure and
/// Applied Chemistry 94 (2022) 573.
namespace weight {
inline constexpr double H = 1.0080;
inline constexpr double C = 12.011;
inline constexpr double N = 14.007;
inline constexpr double O = 15.999;
inline constexpr double F = 18.998;
inline constexpr double Na = 22.990;
inline constexpr double S = 32.06;
inline constexpr double Cl = 35.45;
inline constexpr double K = 39.098;
inline constexpr double Ca = 40.078;
inline constexpr double Cu = 63.546;
inline constexpr double Br = 79.904;
inline constexpr double Ag = 107.87;
inline constexpr double Cd = 112.41;
inline constexpr double I = 126.90;
inline constexpr double Ba = 137.33;
inline constexpr double Hg = 200.59;
inline constexpr double Pb = 207.2;
} // namespace weight

/// The list of the setup page; the positions are fixed. Dissolved NH3 has no charge.
inline constexpr auto types = std::to_array<Type>({
    {"Ag", weight::Ag, 1},
    {"Ba", weight::Ba, 2},
    {"Br", weight::Br, -1},
    {"Ca", weight::Ca, 2},
    {"Cd", weight::Cd, 2},
    {"Cl", weight::Cl, -1},
    {"ClO4", weight::Cl + 4 * weight::O, -1},
    {"CN", weight::C + weight::N, -1},
    {"CO3", weight::C + 3 * weight::O, -2},
    {"Cu", weight::Cu, 2},
    {"F", weight::F, -1},
    {"H", weight::H, 1},
    {"Hg", weight::Hg, 2},
    {"I", weight::I, -1},
    {"K", weight::K, 1},
    {"Na", weight::Na, 1},
    {"NH3", weight::N + 3 * weight::H, 0},
    {"NH4", weight::N + 4 * weight::H, 1},
    {"NO2", weight::N + 2 * weight::O, -1},
    {"NO3", weight::N + 3 * weight::O, -1},
    {"OH", weight::O + weight::H, -1},
    {"Pb", weight::Pb, 2},
    {"S", weight::S, -2},
    {"SCN", weight::S + weight::C + weight::N, -1},
    {pHName, 0, 1},
    {redoxName, 0, 0},
    {noneName, 0, 0},
});

/// Position of "None" in the list.
inline constexpr int noneIndex =
    static_cast<int>(std::ranges::find(types, noneName, &Type::name) - types.begin());

/// The kind that a name tells: "Redox" in it, "(pH" in it, exactly "None" (or empty), else an ion.
Kind KindOf(std::string_view electrode);

/// Molar mass of a listed ion in g/mol; 0 for pH, Redox, None and unknown names.
float MolarMass(std::string_view electrode);

/// Signed charge number of a listed ion (Ca: 2, Cl: -1, pH: 1); 0 where it is not known.
int Charge(std::string_view electrode);

} // namespace Electrode
