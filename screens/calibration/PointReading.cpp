#include "screens/calibration/PointReading.h"

#include "app/Mcommon.h"
#include "chem/Measure.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "screens/calibration/ChannelRecords.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <optional>

namespace {

constexpr auto elapsedInterval = std::chrono::milliseconds(250);

constexpr auto noTemperature = "Error";

/// The position of a channel's temperature sensor in a cycle; nothing where it has none.
std::optional<std::size_t> SensorPosition(int channel) {
    const int sensor = SetupOf(channel).TempSensor;
    if (sensor < 1 || sensor > tempSensorCount)
        return std::nullopt;
    return static_cast<std::size_t>(maxChannels + sensor - 1);
}

std::chrono::milliseconds Now() {
    return platform::Current().clock.Monotonic();
}

} // namespace

PointReading::PointReading(CalibrationSession& session, QObject& form)
    : QObject(&form), session_(session) {
    tmrRead.setParent(this);
    tmrRead.setObjectName("tmrRead");
    tmrElapsed.setParent(this);
    tmrElapsed.setObjectName("tmrElapsed");
    tmrElapsed.setInterval(elapsedInterval);
}

void PointReading::Begin() {
    session_.BeginReading();
    StartSeries();
    series_.Start(mWinInit::HardwareSettings.AveragingForCalibration);
    tmrElapsed.start();
}

void PointReading::Stop() {
    tmrElapsed.stop();
    series_.Stop();
    session_.StopReading();
}

void PointReading::RestartAveraging() {
    if (!series_.IsRunning())
        return;
    StartSeries();
    series_.RestartAveraging(mWinInit::HardwareSettings.AveragingForCalibration);
}

void PointReading::EndBusyPointer() const {
    if (!series_.IsRunning())
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
}

/// Nothing of an earlier averaging is left in marks and trend.
void PointReading::StartSeries() {
    trace_.clear();
    temperature_celsius_.fill({});
    for (StabilityMark& mark : marks_)
        mark.Start(Now());
}

void PointReading::OnTimer(const std::function<void()>& show) {
    if (boxOpen_)
        return;
    std::array<float, cyclePositions> averages{};
    switch (series_.OnTimer(averages)) {
    case ReadingSeries::Tick::nothing:
    case ReadingSeries::Tick::lost: // a calibration does not go on after a failure
        break;
    case ReadingSeries::Tick::values:
        TakeAverages(averages);
        show();
        break;
    case ReadingSeries::Tick::failed: {
        Stop();
        show();
        const auto held = HoldForBox();
        Mcommon::Warn(DataAcq::connectionMessage);
        break;
    }
    }
}

void PointReading::TakeAverages(std::span<const float, cyclePositions> averages) {
    const auto now = Now();
    Sample sample{.sinceRead = marks_.front().Elapsed(now), .potential_mV = {}};
    std::ranges::copy(averages.first<maxChannels>(), sample.potential_mV.begin());
    trace_.push_back(sample);
    while (trace_.front().sinceRead + longestTrace < sample.sinceRead)
        trace_.pop_front();
    for (const int channel : session_.Channels()) {
        const auto position = static_cast<std::size_t>(channel);
        session_.SetLive(channel, averages[position]);
        marks_.at(position).Add(averages[position], now);
    }
    TakeTemperatures(averages);
}

void PointReading::TakeTemperatures(std::span<const float, cyclePositions> averages) {
    std::array<std::int16_t, cyclePositions> selected{};
    for (const int channel : session_.Channels())
        if (const auto position = SensorPosition(channel))
            selected.at(*position) = -1;
    std::array<float, cyclePositions> values{};
    const auto failures =
        Measure::ConvertReadings(mWinInit::ConversionTables(), selected, averages, values);
    for (const int channel : session_.Channels())
        if (const auto position = SensorPosition(channel))
            temperature_celsius_.at(static_cast<std::size_t>(channel)) =
                failures.at(*position) ? noTemperature
                                       : Mcommon::FormatReading(values.at(*position));
}

std::string PointReading::TemperatureText(int channel) const {
    return session_.IsReading() ? temperature_celsius_.at(static_cast<std::size_t>(channel))
                                : std::string();
}

std::string PointReading::ElapsedText() const {
    return series_.IsRunning() ? MinutesAndSeconds(marks_.front().Elapsed(Now())) + " since Read"
                               : std::string();
}

const StabilityMark* PointReading::MarkOf(int channel) const {
    return session_.IsReading() && session_.HasLive()
               ? &marks_.at(static_cast<std::size_t>(channel))
               : nullptr;
}

bool PointReading::MayClose() {
    closeWaits_ = series_.IsAtWork(); // a form that deletes itself waits for the tick to end
    return !boxOpen_ && !closeWaits_;
}
