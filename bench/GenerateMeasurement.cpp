// vantrel-generate RECORDS FILE [CHANNELS|measured]: writes a measurement file of so many records
// with the program's own writer, one record a second from midnight on, for the viewer's figures.
// "measured" stands for what a bench gives: pH, two ions and an idle channel, calibrated, with
// values computed from potentials with noise.

#include "chem/MeasuringCycle.h"
#include "files/MeasurementFormat.h"
#include "platform/Clock.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr std::array<const char*, maxChannels> electrodes = {"Ca", "H (pH)", "NO3", "Redox",
                                                             "K",  "Na",     "Cl",  "F"};
constexpr std::size_t writeBlock = 1 << 20;

/// What the channels show in a record.
using Values = std::function<FileOpr::DisplayedChannels(std::int32_t record)>;

void SetUp(std::size_t channels) {
    mWinInit::HardwareSettings.ChannelCount = static_cast<std::int16_t>(channels);
    mWinInit::ProjectInfo.ProjectName = "Generated measurement";
    mWinInit::ProjectInfo.Experimentator = "Generator";
    for (std::size_t i = 0; i < channels; ++i) {
        mWinInit::ChannelSetup[i].Electrode = electrodes[i];
        mWinInit::ChannelSetup[i].SerialNo = "S" + std::to_string(i + 1);
        mWinInit::ChannelSetup[i].TempSensor = static_cast<std::int16_t>(i % 4 + 1);
    }
}

LocalTime TimeOf(std::int32_t record) {
    LocalTime time{2003, 3, 1, 0, 0, 0};
    time.day = 1 + record / 86400 % 28;
    time.hour = record / 3600 % 24;
    time.minute = record / 60 % 60;
    time.second = record % 60;
    return time;
}

std::string Decimal(double value) {
    std::array<char, 32> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 1);
    return {text.data(), result.ptr};
}

/// Slow waves, so that a graph of them has a shape.
FileOpr::DisplayedChannels ValuesOf(std::int32_t record, std::size_t channels) {
    FileOpr::DisplayedChannels values;
    for (std::size_t i = 0; i < channels; ++i) {
        const double wave = std::sin(record / (300.0 + 40.0 * static_cast<double>(i)));
        const double level = 20.0 * static_cast<double>(i + 1);
        values[i] = {Decimal(level + 10 * wave), Decimal(7 + wave), Decimal(level / 2 + wave),
                     "1.23E-03", Decimal(25 + wave)};
    }
    return values;
}

/// A run of a calibrated instrument, the same each time.
class MeasuredRun {
public:
    MeasuredRun() {
        Calibrate(0, "H (pH)", 0, {4, 7, 10}, {172.1F, -3.2F, -176.4F});
        Calibrate(1, "Ca", 40.078F, {1, 10, 100}, {-31.2F, -2.4F, 26.3F});
        Calibrate(2, "Cl", 35.45F, {0.001F, 0.01F, 0.1F}, {118.3F, 60.2F, 3.1F});
        mWinInit::Calibration[2].StdUnit = 1;
        mWinInit::ChannelSetup[3].Electrode = "None";
    }

    FileOpr::DisplayedChannels ValuesOf(std::int32_t record) {
        const std::array<float, used> middle_mV = {0, 0, 60};
        std::array<float, cyclePositions> averages{};
        for (std::size_t i = 0; i < used; ++i) {
            const double wave = 60 * std::sin(record / (9000.0 + 1000.0 * static_cast<double>(i)));
            averages[i] = middle_mV[i] + static_cast<float>(wave + noise_mV_(chance_));
        }
        const auto outcome = MeasuringCycle::Run(source_, averages);
        FileOpr::DisplayedChannels shown;
        for (std::size_t i = 0; i < used; ++i)
            for (const auto& row : Quantities::table)
                shown[i][row.quantity] = outcome.cells[i][row.quantity].text;
        return shown;
    }

private:
    static constexpr std::size_t used = 3;
    using Points = std::array<float, 3>;

    void Calibrate(std::size_t channel, const char* electrode, float molarMass_g_per_mol,
                   const Points& standards, const Points& potentials_mV) {
        CalibrationRecord& calibration = mWinInit::Calibration[channel];
        calibration.CalibrationDate = "10:12 28.Feb.2003";
        calibration.PointCount = static_cast<std::int16_t>(standards.size());
        std::ranges::copy(standards, calibration.Standard.begin());
        std::ranges::copy(potentials_mV, calibration.CaliData.begin());
        mWinInit::ChannelSetup[channel].Electrode = electrode;
        source_.tables.electrode[channel] = mWinInit::ChannelSetup[channel].Electrode;
        source_.selected[channel] = -1;
        source_.molarMass_g_per_mol[channel] = molarMass_g_per_mol;
    }

    MeasuringCycle::Source source_{{{}, mWinInit::Calibration, mWinInit::TempSensor}, {}, {}, {}};
    std::mt19937 chance_{2003};
    std::normal_distribution<double> noise_mV_{0, 0.2};
};

void Write(std::int32_t records, const std::string& file, std::size_t channels,
           const Values& values) {
    const auto setup = std::span(mWinInit::ChannelSetup).first(channels);
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    std::string text = MeasurementFormat::HeaderText(
        {mWinInit::ProjectInfo, setup, std::span(mWinInit::Calibration).first(channels)},
        TimeOf(0));
    const MeasurementFormat::RunRows rows = MeasurementFormat::RowsOf(setup);
    for (std::int32_t record = 1; record <= records; ++record) {
        text += MeasurementFormat::RecordText(
            MeasurementFormat::BuildRecord(record, TimeOf(record), "", values(record), channels),
            rows, channels);
        if (text.size() < writeBlock && record < records)
            continue;
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        text.clear();
    }
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + file);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::cerr << "usage: vantrel-generate RECORDS FILE [CHANNELS|measured]\n"
                     "RECORDS: 86400 for a day at one record a second, 604800 for a week\n"
                     "CHANNELS: 4 (as it is left out) or 8\n"
                     "measured: four channels, calibrated, with noise\n";
        return 2;
    }
    std::int32_t records = 0;
    const std::string_view typed = argv[1];
    std::from_chars(typed.data(), typed.data() + typed.size(), records);
    const std::string_view kind = argc > 3 ? argv[3] : "4";
    const std::size_t channels = kind == "8" ? 8 : 4;
    SetUp(channels);
    try {
        if (kind == "measured")
            Write(std::max(records, 0), argv[2], channels,
                  [run = MeasuredRun()](std::int32_t record) mutable {
                      return run.ValuesOf(record);
                  });
        else
            Write(std::max(records, 0), argv[2], channels,
                  [channels](std::int32_t record) { return ValuesOf(record, channels); });
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
