// vantrel-generate RECORDS FILE [CHANNELS]: writes a measurement file of so many records with the
// program's own writer, one record a second from midnight on, for the viewer's figures.

#include "files/MeasurementFormat.h"
#include "platform/Clock.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr std::array<const char*, maxChannels> electrodes = {"Ca", "H (pH)", "NO3", "Redox",
                                                             "K",  "Na",     "Cl",  "F"};
constexpr std::size_t writeBlock = 1 << 20;

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

void Write(std::int32_t records, const std::string& file, std::size_t channels) {
    SetUp(channels);
    const auto setup = std::span(mWinInit::ChannelSetup).first(channels);
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    std::string text = MeasurementFormat::HeaderText(
        {mWinInit::ProjectInfo, setup, std::span(mWinInit::Calibration).first(channels)},
        TimeOf(0));
    const MeasurementFormat::RunRows rows = MeasurementFormat::RowsOf(setup);
    for (std::int32_t record = 1; record <= records; ++record) {
        text += MeasurementFormat::RecordText(
            MeasurementFormat::BuildRecord(record, TimeOf(record), "", ValuesOf(record, channels),
                                           channels),
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
        std::cerr << "usage: vantrel-generate RECORDS FILE [CHANNELS]\n"
                     "RECORDS: 86400 for a day at one record a second, 604800 for a week\n"
                     "CHANNELS: 4 (as it is left out) or 8\n";
        return 2;
    }
    std::int32_t records = 0;
    const std::string_view typed = argv[1];
    std::from_chars(typed.data(), typed.data() + typed.size(), records);
    const bool eight = argc > 3 && std::string_view(argv[3]) == "8";
    try {
        Write(std::max(records, 0), argv[2], eight ? 8 : 4);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
