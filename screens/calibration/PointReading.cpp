#include "screens/calibration/PointReading.h"

#include "app/Mcommon.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "settings/mWinInit.h"

namespace {

constexpr auto elapsedInterval = std::chrono::milliseconds(250);

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
    StartMarks();
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
    StartMarks();
    series_.RestartAveraging(mWinInit::HardwareSettings.AveragingForCalibration);
}

void PointReading::EndBusyPointer() const {
    if (!series_.IsRunning())
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
}

void PointReading::StartMarks() {
    for (StabilityMark& mark : marks_)
        mark.Start(Now());
}

void PointReading::OnTimer(const std::function<void()>& show) {
    if (boxOpen_)
        return;
    std::array<float, cyclePositions> averages{};
    switch (series_.OnTimer(averages)) {
    case ReadingSeries::Tick::nothing:
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
    for (const int channel : session_.Channels()) {
        const auto position = static_cast<std::size_t>(channel);
        session_.SetLive(channel, averages[position]);
        marks_.at(position).Add(averages[position], Now());
    }
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
