// Conversion with arbitrary tables: each selected position is converted to a finite number or says
// why not, and unselected ones keep their value.

#include "chem/Measure.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void Demand(bool promise) {
    if (!promise)
        std::abort();
}

/// Takes values off the input; zeros behind its end.
class Source {
public:
    Source(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    template <class Value>
    Value Take() {
        Value value{};
        const std::size_t count = left_ < sizeof(Value) ? left_ : sizeof(Value);
        std::memcpy(&value, data_, count);
        data_ += count;
        left_ -= count;
        return value;
    }

    template <class Table>
    void Fill(Table& table) {
        for (auto& value : table)
            value = Take<std::remove_reference_t<decltype(value)>>();
    }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

constexpr std::array<std::string_view, 5> electrodes = {"H (pH)", "Ca", "Redox", "None", ""};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    std::array<std::string_view, maxChannels> electrode{};
    std::array<CalibrationRecord, maxChannels> calibration{};
    std::array<TempSensorCalibration, tempSensorCount> sensor{};
    std::array<std::int16_t, cyclePositions> selected{};
    std::array<float, cyclePositions> readings{};
    for (auto& name : electrode)
        name = electrodes[source.Take<std::uint8_t>() % electrodes.size()];
    source.Fill(selected);
    source.Fill(readings);
    for (auto& record : calibration) {
        record.PointCount = source.Take<std::int8_t>();
        source.Fill(record.CaliData);
        source.Fill(record.Standard);
    }
    for (auto& table : sensor) {
        table.PointCount = source.Take<std::int8_t>();
        source.Fill(table.Reading);
        source.Fill(table.Temperature);
    }
    constexpr float untouched = -12345.0F;
    std::array<float, cyclePositions> converted{};
    converted.fill(untouched);
    Measure::Reset();
    const auto failures =
        Measure::ConvertReadings({electrode, calibration, sensor}, selected, readings, converted);
    for (std::size_t i = 0; i < cyclePositions; ++i) {
        const bool noNumber = std::isnan(converted[i]) || std::isinf(converted[i]);
        // A table may itself hold no number; an exact hit hands its entry on as it stands.
        Demand(!noNumber || selected[i] != 0);
        Demand(selected[i] != 0 || (converted[i] == untouched && !failures[i]));
        Demand(!failures[i] || converted[i] == untouched);
    }
    for (auto& record : calibration) {
        Measure::RestoreSlopes(record, (record.PointCount & 1) != 0);
        for (const float slope : record.Slope)
            Demand(std::isfinite(slope));
    }
    return 0;
}
