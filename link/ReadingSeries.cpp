#include "link/ReadingSeries.h"

#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"

using namespace std::chrono_literals;

namespace {

constexpr auto connectedInterval = 1500ms;
constexpr auto unconnectedInterval = 50ms;

void SetPointer(platform::MousePointer pointer) {
    platform::Current().desktop.SetMousePointer(pointer);
}

/// Marks a tick at work, also when it is left by an exception.
class AtWork {
public:
    explicit AtWork(bool& flag) : flag_(flag) { flag_ = true; }
    ~AtWork() { flag_ = false; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

private:
    bool& flag_;
};

} // namespace

ReadingSeries::~ReadingSeries() {
    Stop();
}

void ReadingSeries::SetTimerInterval() {
    const auto interval = DataAcq::ConnectionState == 1 ? connectedInterval : unconnectedInterval;
    if (timer_.Interval() != interval)
        timer_.SetInterval(interval);
}

void ReadingSeries::Start(std::int16_t averageCount) {
    RestartAveraging(averageCount);
    running_ = true;
    SetTimerInterval();
    timer_.SetEnabled(true);
    CommPort::BeginReading();
}

void ReadingSeries::RestartAveraging(std::int16_t averageCount) {
    SetPointer(platform::MousePointer::hourglass);
    BeginAveraging(averageCount);
}

/// A tick at work below this call holds the averaging; it is abandoned, and the new averaging
/// begins when the tick has ended.
void ReadingSeries::BeginAveraging(std::int16_t averageCount) {
    if (atWork_) {
        DataAcq::ReadingEnabled = false;
        waitingAverageCount_ = averageCount;
    } else {
        DataAcq::StartSeries(averageCount);
    }
}

void ReadingSeries::Stop() {
    if (!running_)
        return;
    running_ = false;
    timer_.SetEnabled(false);
    DataAcq::ReadingEnabled = false;
    CommPort::EndReading();
    SetPointer(platform::MousePointer::normal);
}

ReadingSeries::Tick ReadingSeries::OnTimer(std::span<float, cyclePositions> averages) {
    if (!running_ || atWork_)
        return Tick::nothing;
    const AtWork atWork(atWork_);
    if (CommPort::HasFailed()) {
        Stop();
        return Tick::failed;
    }
    if (CommPort::State() != CommPort::LinkState::answered)
        return Tick::nothing;
    DataAcq::ReadChannels(averages);
    // Events ran meanwhile: the user may have stopped, started again or changed the number.
    if (waitingAverageCount_)
        DataAcq::StartSeries(*waitingAverageCount_);
    const bool abandoned = waitingAverageCount_.has_value() || !running_;
    waitingAverageCount_.reset();
    if (!running_)
        DataAcq::ReadingEnabled = false;
    if (abandoned)
        return Tick::nothing;
    SetTimerInterval();
    SetPointer(platform::MousePointer::normal);
    return Tick::values;
}
