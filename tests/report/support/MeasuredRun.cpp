#include "report/support/MeasuredRun.h"

#include "files/MeasurementFormat.h"
#include "settings/mWinInit.h"

#include <cmath>

namespace {
constexpr float calciumMass = 40.078F;
constexpr float chlorineMass = 35.45F;
} // namespace

MeasuredRun::MeasuredRun(std::uint32_t seed, int recordCount) : chance_(seed) {
    molarMass_g_per_mol = {0, calciumMass, chlorineMass, 0};
    Calibrate(0, true);
    Calibrate(1, false);
    Calibrate(2, false);
    calibration[2].StdUnit = 1;
    for (int i = 0; i < recordCount; ++i)
        potentials_mV.push_back(
            {Between(-400, 400), Between(-300, 300), Between(-300, 300), Between(-500, 500)});
    Measure();
}

void MeasuredRun::Calibrate(std::size_t channel, bool isPH) {
    CalibrationRecord& record = calibration[channel];
    record.CalibrationDate = "10:12 06.Mar.2003";
    record.PointCount = static_cast<std::int16_t>(2 + Below(5));
    const float slope = (Below(2) == 0 ? -1.0F : 1.0F) * Between(20, 60);
    float potential_mV = Between(-200, 200);
    for (std::size_t k = 0; k < record.Points(); ++k) {
        record.Standard[k] =
            isPH ? 2 + 2 * static_cast<float>(k) : std::pow(10.0F, static_cast<float>(k) - 2);
        record.CaliData[k] = potential_mV;
        potential_mV += slope * (isPH ? 2.0F : 1.0F) * Between(0.8F, 1.2F);
    }
}

ChannelDisplay::Cells MeasuredRun::CellsOf(std::size_t channel, float potential_mV) const {
    std::array<TempSensorCalibration, tempSensorCount> sensors;
    MeasuringCycle::Source source{
        {{electrode[0], electrode[1], electrode[2], electrode[3]}, calibration, sensors},
        {},
        {},
        molarMass_g_per_mol};
    source.selected[channel] = -1;
    std::array<float, cyclePositions> averages{};
    averages[channel] = potential_mV;
    return MeasuringCycle::Run(source, averages).cells[channel];
}

void MeasuredRun::Measure() {
    records.clear();
    for (const auto& potentials : potentials_mV) {
        FileOpr::DisplayedChannels shown;
        for (std::size_t i = 0; i < channels; ++i) {
            const auto cells = CellsOf(i, potentials[i]);
            for (const auto& row : Quantities::table)
                shown[i][row.quantity] = cells[row.quantity].text;
        }
        records.push_back(shown);
    }
}

std::string MeasuredRun::Text() const {
    std::array<mWinInit::ChannelSetupRecord, channels> setup;
    for (std::size_t i = 0; i < channels; ++i)
        setup[i].Electrode = electrode[i];
    const LocalTime now{2003, 3, 7, 14, 5, 33};
    std::string text = MeasurementFormat::HeaderText(
        {mWinInit::ProjectInfoRecord{}, setup, std::span(calibration).first(channels)}, now);
    const auto rows = MeasurementFormat::RowsOf(setup);
    for (std::size_t i = 0; i < records.size(); ++i)
        text += MeasurementFormat::RecordText(
            MeasurementFormat::BuildRecord(static_cast<std::int32_t>(i) + 1, now, "", records[i],
                                           channels),
            rows, channels);
    return text;
}
