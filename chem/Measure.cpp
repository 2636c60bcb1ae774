#include "chem/Measure.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Measure {

bool IsPHMode = false;

namespace {

constexpr double milligramsPerGram = 1000.0; // 1 ppm is taken as 1 mg/l

float At(std::span<const float> table, std::size_t index) {
    if (index >= table.size())
        throw RunTimeError("Subscript out of range");
    return table[index];
}

/// The value in single precision. A result that single precision cannot hold is a run-time error,
/// never an infinity that a display would show.
float Single(double value) {
    if (std::isnan(value))
        throw RunTimeError("Invalid procedure call or argument");
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        throw RunTimeError("Overflow");
    return static_cast<float>(value);
}

double Quotient(double dividend, double divisor) {
    if (divisor == 0)
        throw RunTimeError("Division by zero");
    return dividend / divisor;
}

/// First row at or behind the reading in the table's own direction; `points` when there is none.
std::size_t FindRow(std::size_t points, std::span<const float> input, float reading) {
    const bool ascending = At(input, 0) <= At(input, 1);
    std::size_t k = 0;
    while (k < points && !(ascending ? reading <= At(input, k) : reading >= At(input, k)))
        ++k;
    return k;
}

/// The row that ends the segment to use: the outer segments serve all that lies beyond them.
std::size_t SegmentEnd(std::size_t row, std::size_t points) {
    if (row == 0)
        return 1;
    return row == points ? points - 1 : row;
}

float InterpolateLinear(std::size_t k, std::span<const float> input, std::span<const float> output,
                        float reading) {
    const double x0 = At(input, k - 1);
    const double y0 = At(output, k - 1);
    const float width_mV = Single(At(input, k) - x0);
    if (width_mV == 0)
        return -1.0F;
    const float slope = Single((At(output, k) - y0) / width_mV);
    return Single((reading - x0) * slope + y0);
}

float InterpolateLogarithmic(std::size_t k, std::span<const float> input,
                             std::span<const float> output, float reading) {
    const double x0 = At(input, k - 1);
    const double x1 = At(input, k);
    const double log0 = Mcommon::Log10(At(output, k - 1));
    const double decades = Mcommon::Log10(At(output, k)) - log0;
    if (decades == 0)
        return -1.0F;
    const float slope_mV_per_decade = Single((x1 - x0) / decades);
    const float quotient = Single(Quotient(reading - x0, slope_mV_per_decade));
    return Single(std::pow(10.0, log0 + quotient));
}

std::span<const float> Rows(std::span<const float> table, int count) {
    if (count < 0 || std::cmp_greater(count, table.size()))
        throw RunTimeError("Subscript out of range");
    return table.first(static_cast<std::size_t>(count));
}

float ConvertElectrode(std::string_view electrode, const CalibrationRecord& record, float reading) {
    const auto kind = Electrode::KindOf(electrode);
    if (kind == Electrode::Kind::redox)
        return 1.0F; // a marker: what a Redox channel gives is its potential
    const auto input = Rows(record.CaliData, record.PointCount);
    const auto output = Rows(record.Standard, record.PointCount);
    IsPHMode = kind == Electrode::Kind::pH;
    return InterpolateReading(input.size(), input, output, reading);
}

/// A sensor's table has one spare row of zeros behind its last, so that a table of one row still
/// has a segment to extend.
float ConvertTemperature(const TempSensorCalibration& sensor, float reading) {
    std::array<float, maxTempSensorRows + 1> input{};
    std::array<float, maxTempSensorRows + 1> output{};
    const auto readings = Rows(sensor.Reading, sensor.PointCount);
    std::ranges::copy(readings, input.begin());
    std::ranges::copy(Rows(sensor.Temperature, sensor.PointCount), output.begin());
    return InterpolateReading(readings.size(), std::span(input).first(readings.size() + 1),
                              std::span(output).first(readings.size() + 1), reading);
}

float ConvertPosition(const InputTables& tables, std::size_t position, float reading) {
    if (position < maxChannels)
        return ConvertElectrode(tables.electrode[position], tables.calibration[position], reading);
    return ConvertTemperature(tables.tempSensor[position - maxChannels], reading);
}

float DisplayedSlope(const CalibrationRecord& record, std::size_t s, bool isPH) {
    const double rise_mV =
        static_cast<double>(record.CaliData[s + 1]) - static_cast<double>(record.CaliData[s]);
    const double y0 = record.Standard[s];
    const double y1 = record.Standard[s + 1];
    const double run = isPH ? y1 - y0 : Mcommon::Log10(y1) - Mcommon::Log10(y0);
    const float slope = Single(Quotient(rise_mV, run));
    return Single(NumberText::Leading(Mcommon::FormatReading(slope)));
}

std::size_t SegmentCount(const CalibrationRecord& record) {
    return std::max<std::size_t>(record.Points(), 1) - 1;
}

} // namespace

float InterpolateReading(std::size_t points, std::span<const float> input,
                         std::span<const float> output, float reading) {
    return InterpolateReading(IsPHMode, points, input, output, reading);
}

float InterpolateReading(bool isPH, std::size_t points, std::span<const float> input,
                         std::span<const float> output, float reading) {
    const std::size_t row = FindRow(points, input, reading);
    if (row < points && reading == At(input, row))
        return At(output, row);
    const std::size_t k = SegmentEnd(row, points);
    return isPH ? InterpolateLinear(k, input, output, reading)
                : InterpolateLogarithmic(k, input, output, reading);
}

std::size_t SegmentOf(std::size_t points, std::span<const float> input, float reading) {
    return SegmentEnd(FindRow(points, input, reading), points);
}

ConversionFailures ConvertReadings(const InputTables& tables,
                                   std::span<const std::int16_t, cyclePositions> selected,
                                   std::span<const float, cyclePositions> readings,
                                   std::span<float, cyclePositions> converted) {
    ConversionFailures failures;
    for (std::size_t i = 0; i < cyclePositions; ++i) {
        if (selected[i] == 0)
            continue;
        try {
            converted[i] = ConvertPosition(tables, i, readings[i]);
        } catch (const RunTimeError& error) {
            failures[i] = error.what();
        }
    }
    return failures;
}

bool IsUsable(const CalibrationRecord& record) {
    return record.PointCount >= 2 && record.PointCount <= maxCalibrationPoints;
}

std::array<std::int16_t, cyclePositions>
SelectPositions(const InputTables& tables,
                std::span<const std::int16_t, maxChannels> channelSelected,
                std::span<const int, maxChannels> tempSensorOfChannel) {
    std::array<std::int16_t, cyclePositions> selected{};
    for (std::size_t i = 0; i < maxChannels; ++i) {
        if (channelSelected[i] == 0)
            continue;
        const auto kind = Electrode::KindOf(tables.electrode[i]);
        const bool convertible = kind == Electrode::Kind::redox ||
                                 (kind != Electrode::Kind::none && IsUsable(tables.calibration[i]));
        selected[i] = convertible ? -1 : 0;
        if (const auto position = SensorPosition(tempSensorOfChannel[i]))
            selected[*position] = -1;
    }
    return selected;
}

void RestoreSlopes(CalibrationRecord& record, bool isPH) {
    record.Slope.fill(0);
    for (std::size_t s = 0; s < SegmentCount(record); ++s) {
        try {
            record.Slope[s] = DisplayedSlope(record, s, isPH);
        } catch (const RunTimeError&) {
            // These points allow no slope; the record itself is still whole.
        }
    }
}

void ComputeSlopes(CalibrationRecord& record) {
    for (std::size_t s = 0; s < SegmentCount(record); ++s)
        record.Slope[s] = DisplayedSlope(record, s, IsPHMode);
}

float ToMolPerLitre(float ppm, float molarMass_g_per_mol) {
    return Single(Quotient(ppm, molarMass_g_per_mol * milligramsPerGram));
}

float ToPpm(float mol_per_litre, float molarMass_g_per_mol) {
    return Single(static_cast<double>(mol_per_litre) * molarMass_g_per_mol * milligramsPerGram);
}

void Reset() {
    IsPHMode = false;
}

} // namespace Measure
