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

constexpr const char* noTemperature = "Error";

/// The position of a channel's temperature sensor in a cycle; nothing where it has none.
std::optional<std::size_t> SensorOf(std::size_t channel) {
    return SensorPosition(SetupOf(channel).TempSensor);
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
    for (const std::size_t channel : session_.Channels()) {
        session_.SetLive(channel, averages[channel]);
        marks_.at(channel).Add(averages[channel], now);
    }
    TakeTemperatures(averages);
}

void PointReading::TakeTemperatures(std::span<const float, cyclePositions> averages) {
    std::array<std::int16_t, cyclePositions> selected{};
    for (const std::size_t channel : session_.Channels())
        if (const auto position = SensorOf(channel))
            selected.at(*position) = -1;
    std::array<float, cyclePositions> values{};
    const auto failures =
        Measure::ConvertReadings(mWinInit::ConversionTables(), selected, averages, values);
    for (const std::size_t channel : session_.Channels())
        if (const auto position = SensorOf(channel))
            temperature_celsius_.at(channel) = failures.at(*position)
                                                   ? noTemperature
                                                   : Mcommon::FormatReading(values.at(*position));
}

std::string PointReading::TemperatureText(std::size_t channel) const {
    return session_.IsReading() ? temperature_celsius_.at(channel) : std::string();
}

std::string PointReading::ElapsedText() const {
    return series_.IsRunning() ? MinutesAndSeconds(marks_.front().Elapsed(Now())) + " since Read"
                               : std::string();
}

const StabilityMark* PointReading::MarkOf(std::size_t channel) const {
    return session_.IsReading() && session_.HasLive() ? &marks_.at(channel) : nullptr;
}

bool PointReading::MayClose() {
    closeWaits_ = series_.IsAtWork(); // a form that deletes itself waits for the tick to end
    return !boxOpen_ && !closeWaits_;
}
