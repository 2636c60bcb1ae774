#include "link/ReadingSeries.h"

#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"

#include <utility>

namespace {

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
    const bool connected = DataAcq::Reader().ConnectionState == 1;
    const auto interval = connected ? pace_.connected : pace_.unconnected;
    if (timer_.Interval() != interval)
        timer_.SetInterval(interval);
}

void ReadingSeries::Start(int averageCount) {
    AwaitAverage(averageCount);
    SetTimerInterval();
    timer_.SetEnabled(true);
    CommPort::GoOnAfterFailure(goesOn_);
    losses_ = CommPort::Losses();
    CommPort::BeginReading();
}

void ReadingSeries::GoOnAfterFailure(bool goOn) {
    goesOn_ = goOn;
    if (IsRunning())
        CommPort::GoOnAfterFailure(goOn);
}

void ReadingSeries::RestartAveraging(int averageCount) {
    if (state_ == State::lost)
        DataAcq::StartSeries(averageCount); // waits for the instrument
    else if (IsRunning())
        AwaitAverage(averageCount);
}

/// A tick at work below this call holds the averaging; it is abandoned, and the new averaging
/// begins when the tick has ended.
void ReadingSeries::AwaitAverage(int averageCount) {
    state_ = State::averaging;
    SetPointer(platform::MousePointer::hourglass);
    if (atWork_) {
        DataAcq::Reader().ReadingEnabled = false;
        waitingAverageCount_ = averageCount;
    } else {
        DataAcq::StartSeries(averageCount);
    }
}

void ReadingSeries::EndAwaiting() {
    if (state_ == State::averaging)
        SetPointer(platform::MousePointer::normal);
}

void ReadingSeries::Stop() {
    if (!IsRunning())
        return;
    EndAwaiting();
    state_ = State::stopped;
    timer_.SetEnabled(false);
    DataAcq::Reader().ReadingEnabled = false;
    waitingAverageCount_.reset();
    CommPort::EndReading();
}

bool ReadingSeries::HasValues() const {
    return state_ == State::giving && !CommPort::HasFailed() && losses_ == CommPort::Losses() &&
           CommPort::State() == CommPort::LinkState::answered;
}

ReadingSeries::Tick ReadingSeries::OnTimer(std::span<float, cyclePositions> averages) {
    if (!IsRunning() || atWork_)
        return Tick::nothing;
    const AtWork atWork(atWork_);
    if (CommPort::HasFailed()) {
        Stop();
        return Tick::failed;
    }
    if (losses_ != CommPort::Losses())
        return TellLoss();
    if (CommPort::State() != CommPort::LinkState::answered)
        return Tick::nothing;
    if (state_ == State::lost)
        AwaitNewAverage();
    return TakeAverages(averages);
}

ReadingSeries::Tick ReadingSeries::TellLoss() {
    EndAwaiting();
    losses_ = CommPort::Losses();
    return std::exchange(state_, State::lost) == State::lost ? Tick::nothing : Tick::lost;
}

/// What the history holds is from before the gap.
void ReadingSeries::AwaitNewAverage() {
    auto& reader = DataAcq::Reader();
    state_ = State::averaging;
    SetPointer(platform::MousePointer::hourglass);
    reader.StartSeries(reader.AverageCount);
}

ReadingSeries::Tick ReadingSeries::TakeAverages(std::span<float, cyclePositions> averages) {
    auto& reader = DataAcq::Reader();
    reader.ReadChannels(averages);
    // Events ran meanwhile: the user may have stopped, started again or changed the number.
    if (const auto waiting = std::exchange(waitingAverageCount_, std::nullopt)) {
        reader.StartSeries(*waiting);
        return Tick::nothing;
    }
    if (!IsRunning())
        return Tick::nothing;
    SetTimerInterval();
    EndAwaiting();
    state_ = State::giving;
    return Tick::values;
}
