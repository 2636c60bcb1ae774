#pragma once

#include <string>
#include <string_view>

/// Unit of typed concentration standards; the numbers are those of `CalibrationRecord::StdUnit`.
enum class StandardUnit { ppm = 0, mol_per_litre = 1 };

/// The unit that a stored `StdUnit` means.
StandardUnit UnitOf(float stdUnit);

/// The entry fields of the standards as texts, and the change of their unit.
namespace StandardEntry {

/// How the prompt begins that a field holds until the analyst types.
inline constexpr std::string_view promptStart = "< Type";

/// An empty text or one that still holds a prompt.
bool IsBlank(std::string_view text);

/// The typed standard in unit `to`, when it stood in the other one, in the number display of
/// standards. A blank text comes back as it was, and so does one that is no number: it is refused
/// when it is read. Throws RunTimeError where the molar mass (g/mol) allows no conversion.
std::string Converted(const std::string& text, StandardUnit to, float molarMass_g_per_mol);

} // namespace StandardEntry
