#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/TempSensorCalibration.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Conversion of readings along the straight lines between calibration points, and slopes.
namespace Measure {

/// Linear (pH) instead of logarithmic interpolation. Global on purpose: temperature positions are
/// interpolated on the scale that the last converted electrode, or a calibration screen, left.
extern bool IsPHMode;

/// What a cycle is converted with.
struct InputTables {
    std::array<std::string_view, maxChannels> electrode;
    std::span<const CalibrationRecord, maxChannels> calibration;
    std::span<const TempSensorCalibration, tempSensorCount> tempSensor;
};

/// Why a position could not be converted; nothing where it was.
using ConversionFailures = std::array<std::optional<std::string>, cyclePositions>;

/// Converts the selected positions of a cycle; others keep their value. A Redox electrode gives
/// the marker 1.0. A position that fails keeps its value and does not keep the others from being
/// converted. Writes IsPHMode.
ConversionFailures ConvertReadings(const InputTables& tables,
                                   std::span<const std::int16_t, cyclePositions> selected,
                                   std::span<const float, cyclePositions> readings,
                                   std::span<float, cyclePositions> converted);

/// A calibration that the conversion can use: 2 to 6 points.
bool IsUsable(const CalibrationRecord& record);

/// The positions of a cycle to convert, -1 each: selected channels of kind Redox, selected pH and
/// ion channels with a usable calibration, and the temperature sensors (1 to 4, others mean none)
/// of all selected channels.
std::array<std::int16_t, cyclePositions>
SelectPositions(const InputTables& tables,
                std::span<const std::int16_t, maxChannels> channelSelected,
                std::span<const int, maxChannels> tempSensorOfChannel);

/// Looks a reading up in a table of `points` rows. The first and last segments are extended: an
/// analyst expects a value beyond the standards, not a blank. -1.0 for a segment of no width.
/// Throws RunTimeError for a table too short ("Subscript out of range") or a logarithm that fails.
float InterpolateReading(std::size_t points, std::span<const float> input,
                         std::span<const float> output, float reading);

/// The same on the scale that is named, whatever IsPHMode is.
float InterpolateReading(bool isPH, std::size_t points, std::span<const float> input,
                         std::span<const float> output, float reading);

/// The row that ends the segment along which a reading is converted, 1 to points - 1.
std::size_t SegmentOf(std::size_t points, std::span<const float> input, float reading);

/// Slope of each segment as displayed; 0 where the points allow none. Used for a stored record.
void RestoreSlopes(CalibrationRecord& record, bool isPH);

/// Computes record.Slope for each pair of successive points on the scale of IsPHMode, each rounded
/// to its displayed text. Throws RunTimeError at the first impossible segment; the slopes before
/// it stay.
void ComputeSlopes(CalibrationRecord& record);

/// A typed standard in the other unit; `molarMass_g_per_mol` must not be 0 for ToMolPerLitre.
float ToMolPerLitre(float ppm, float molarMass_g_per_mol);
float ToPpm(float mol_per_litre, float molarMass_g_per_mol);

/// Back to the state at program start.
void Reset();

} // namespace Measure
