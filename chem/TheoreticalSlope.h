#pragma once

#include <optional>
#include <string_view>

/// How the slopes of a calibration compare with theory. Advice for the analyst: it blocks nothing
/// and enters no file.
namespace TheoreticalSlope {

/// R * T * ln 10 / F at 25 °C in mV per decade, with R = 8.314462618 J/(mol K), T = 298.15 K and
/// F = 96485.33212 C/mol (CODATA 2018): 59.159, in print usually 59.16.
inline constexpr float nernst_mV_per_decade = 59.16F;

/// Slopes of a sound electrode, in percent of theory.
inline constexpr float lowest_percent = 90.0F;
inline constexpr float highest_percent = 105.0F;

/// Theoretical slope of an electrode: mV per decade of concentration, negative for anions; mV per
/// pH for a pH electrode. Nothing where the ion's charge is not known.
std::optional<float> Of(std::string_view electrode);

/// The slope as a percentage of theory, to one decimal; negative when it runs the wrong way.
std::optional<float> Percent(float slope, std::string_view electrode);

bool IsUsual(float percent);

} // namespace TheoreticalSlope
