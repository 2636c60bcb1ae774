#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The working records as the setup page shows and changes them.
namespace SetupEntries {

/// A calendar day.
struct Day {
    int year = 0;
    int month = 0; ///< 1..12
    int day = 0;   ///< 1..31

    bool operator==(const Day&) const = default;
};

/// The day in the last 11 characters ("dd.mmm.yyyy") of a stored date and time; nothing where they
/// are none.
std::optional<Day> DayOf(std::string_view dateText);

/// The stored date and time moved to another day; its time of day stays, midnight where it has
/// none.
std::string OnDay(std::string_view dateText, const Day& day);

/// The day of a stored date and time as "dd.mmm.yyyy", "N/A" where there is none.
std::string DateCell(std::string_view dateText);

/// The last calibration date of a channel as "dd.mmm.yyyy", "N/A" where it is not calibrated.
std::string CalibrationDateCell(std::size_t channel);

/// A molar mass as its box shows it, "N/A" for 0.
std::string MolarMassText(float molarMass_g_per_mol);

/// The analyst has chosen an electrode for a channel: what the library holds for it comes back;
/// where it holds nothing, the chosen name stays and the rest starts empty.
void ChooseElectrode(std::string_view electrode, std::size_t channel);

} // namespace SetupEntries
