#pragma once

#include <array>
#include <string_view>

/// The electrode types that a channel can have, and what their names tell.
namespace Electrode {

/// The list of the setup page; the positions are fixed.
inline constexpr std::array<std::string_view, 27> names = {
    "Ag",  "Ba",  "Br", "Ca", "Cd", "Cl",  "ClO4",   "CN",    "CO3",
    "Cu",  "F",   "H",  "Hg", "I",  "K",   "Na",     "NH3",   "NH4",
    "NO2", "NO3", "OH", "Pb", "S",  "SCN", "H (pH)", "Redox", "None"};
inline constexpr int noneIndex = 26;
inline constexpr std::string_view noneName = "None";
inline constexpr std::string_view redoxName = "Redox";
inline constexpr std::string_view pHName = "H (pH)";

enum class Kind { none, redox, pH, ion };

/// The kind that a name tells: "Redox" in it, "(pH" in it, exactly "None" (or empty), else an ion.
Kind KindOf(std::string_view electrode);

/// Molar mass of a listed ion in g/mol; 0 for pH, Redox, None and unknown names.
float MolarMass(std::string_view electrode);

/// Signed charge number of a listed ion (Ca: 2, Cl: -1, pH: 1); 0 where it is not known.
int Charge(std::string_view electrode);

} // namespace Electrode
