#include "link/Transfer.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/RunTimeError.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

using CommPort::LinkState;
using TransferState::Event;
using TransferState::State;

namespace {

std::string WithMoment(const char* text) {
    return text + DateText::General(platform::Current().clock.Now());
}

} // namespace

// ---- What others see -------------------------------------------------------------------------

bool Transfer::Busy() const {
    return IsAwaiting(state_) || IsMessageOpen(state_);
}

LinkState Transfer::Outcome() const {
    return IsMessageOpen(state_) ? LinkState::waiting : outcome_;
}

bool Transfer::IsReading() const {
    return state_ == State::listening || state_ == State::polling;
}

bool Transfer::IsLost() const {
    return state_ == State::lost || state_ == State::retrying;
}

// ---- Moves -----------------------------------------------------------------------------------

void Transfer::Move(Event event) {
    Move(event, outcome_);
}

void Transfer::Move(Event event, LinkState outcome) {
    const auto formerOutcome = std::exchange(outcome_, outcome);
    const bool wasLost = IsLost();
    const auto former = std::exchange(state_, Next(state_, event, afterFailure_));
    if (IsLost() && !wasLost) {
        ++losses_;
        beforeLoss_ = formerOutcome == LinkState::answered ? lastReading_ : std::nullopt;
    }
    SetTimers();
    if (former != state_ || formerOutcome != outcome_)
        status_.TellObservers();
}

/// Timers and receive threshold follow from the state.
void Transfer::SetTimers() {
    timers_.Follow(state_);
    port_.SetThreshold(TransferState::IsReading(state_) ? Frame::length : 0);
}

void Transfer::BeginReading() {
    if (IsMessageOpen(state_))
        Move(Event::begin);
    else
        StartReading(Event::begin);
}

void Transfer::StartReading(Event event) {
    Move(event, LinkState::waiting);
    timers_.RestartInterval();
    if (OpenPort())
        StartRequest();
}

/// Sees to it that the port is open on what its name stands for now; false where that fails the
/// link.
bool Transfer::OpenPort() {
    try {
        port_.OpenWhatStandsFor(choice_);
    } catch (const RunTimeError& error) {
        Fail(error.what());
        return false;
    }
    return true;
}

void Transfer::EndReading() {
    Move(Event::end);
    if (!IsAwaiting(state_))
        stream_.Restart();
}

void Transfer::SetAfterFailure(AfterFailure choice) {
    afterFailure_ = choice;
    if (choice == AfterFailure::stop)
        Move(Event::giveUp);
}

void Transfer::TransferOnce() {
    Move(Event::request);
    if (!IsAwaiting(state_))
        return;
    if (state_ == State::retrying && !OpenPort())
        return;
    StartRequest();
}

/// Sends the request that the state says is out.
void Transfer::StartRequest() {
    if (!port_.IsOpen()) {
        FailPort(" is not open: ");
        return;
    }
    status_.Set("");
    stream_.Restart();
    // Before the request, so that an instant answer is not thrown away.
    port_.Control().ClearInBuffer();
    timers_.StartWait();
    try {
        SendCommand(Commands::requestFrame);
    } catch (const RunTimeError& error) {
        FailPort(" was lost: ");
        status_.Set(error.what());
        return;
    }
    ReceiveFrame();
}

void Transfer::SendCommand(std::string_view command) {
    const auto bytes = commands.BytesOf(command);
    if (!bytes.empty())
        port_.Control().Output(bytes);
}

void Transfer::Cancel() {
    stream_.Restart();
    Move(Event::cancel);
}

void Transfer::PortOpened() {
    SetTimers();
    ForgetOutcome();
}

void Transfer::ForgetOutcome() {
    if (state_ == State::idle)
        outcome_ = LinkState::waiting;
    status_.TellObservers();
}

/// A start of reading that has met nothing but a failure gives the port back: the next one shall
/// open what the port's name stands for then.
void Transfer::Fail(const std::string& reason) {
    const bool failedStart = IsReading() && outcome_ == LinkState::waiting;
    status_.Set(reason);
    Move(Event::fail, LinkState::failed);
    if (failedStart)
        port_.Close();
}

void Transfer::FailPort(const char* what) {
    port_.Close();
    port_.PortOK = false;
    Fail(PortName::Of(choice_.PortNumber) + WithMoment(what));
}

// ---- Arrivals --------------------------------------------------------------------------------

void Transfer::ReceiveFrame() {
    if (IsAwaiting(state_))
        TakeArrived();
}

void Transfer::MSComm1_OnArrival() {
    if (IsAwaiting(state_) || (TransferState::IsReading(state_) && stream_.IsUnderWay()))
        TakeArrived();
}

void Transfer::MSComm1_OnComm(platform::SerialControl::Event event) {
    if (event == platform::SerialControl::Event::portLost)
        FailPort(" was lost: ");
    else if (event == platform::SerialControl::Event::receive && !Busy() &&
             TransferState::IsReading(state_))
        TakeArrived();
}

/// Takes what lies in the input buffer and acts on the frames in it, as long as the state takes
/// any: a message that one of them opens leaves the others for its end.
void Transfer::TakeArrived() {
    if (!port_.IsOpen())
        return;
    auto& control = port_.Control();
    port_.SetThreshold(0);
    const std::size_t arrived = control.InBufferCount();
    stream_.Feed(control.Input(arrived));
    if (arrived >= Port::inputBufferSize) // what found no room is lost
        stream_.NoteGap();
    while (IsAwaiting(state_) || TransferState::IsReading(state_)) {
        const auto event = stream_.Next();
        if (event == FrameStream::Event::nothing)
            break;
        if (event == FrameStream::Event::frame)
            TakeFrame();
        else
            TakeBadFrame();
    }
    SetTimers();
}

void Transfer::TakeFrame() {
    const bool asked = IsAwaiting(state_);
    TimedOut = false;
    DecodeFrame();
    lastReading_ = platform::Current().clock.Now();
    Move(Event::frame, LinkState::answered);
    if (asked && status_.Text().empty())
        status_.Set("Data transfer completed: " + DateText::General(*lastReading_));
}

void Transfer::DecodeFrame() {
    const auto values = Frame::Decode(stream_.LastFrame());
    std::copy(values.begin(), values.end(), Readings.begin());
}

void Transfer::TakeBadFrame() {
    TimedOut = false;
    const auto text = WithMoment("Data transmission uncompleted: ");
    status_.Set(text);
    Move(Event::badFrame);
    if (IsMessageOpen(state_))
        ShowBadFrameMessage(text);
    else
        Move(Event::fail, LinkState::failed);
}

void Transfer::ShowBadFrameMessage(const std::string& text) {
    try {
        Mcommon::MessageBoxEx(text, platform::style::okOnly, platform::style::exclamation);
    } catch (...) {
        MessageAnswered();
        throw;
    }
    MessageAnswered();
}

/// The link fails with the answer to the message, unless reading began anew meanwhile.
void Transfer::MessageAnswered() {
    if (state_ == State::messageRestart) {
        StartReading(Event::answered);
        return;
    }
    const bool failedStart = state_ == State::message && outcome_ == LinkState::waiting;
    Move(Event::answered, LinkState::failed);
    if (failedStart)
        port_.Close();
    DropOverflow();
}

/// Forgets the input when the buffer ran full while the message was open: it then has a gap.
void Transfer::DropOverflow() {
    if (!port_.IsOpen() || port_.Control().InBufferCount() < Port::inputBufferSize)
        return;
    port_.Control().ClearInBuffer();
    stream_.LoseStep();
}

// ---- Timers ----------------------------------------------------------------------------------

void Transfer::tmrTimeout_Timer() {
    if (!IsAwaiting(state_))
        return;
    TimedOut = true;
    TakeArrived(); // where both meet the frame counts
    if (!std::exchange(TimedOut, false))
        return;
    Fail(WithMoment(stream_.BytesSinceRestart() == 0 ? "System not responding: "
                                                     : "Data transmission Timeout Error: "));
}

void Transfer::tmrTransferInterval_Timer() {
    ApplyTransferInterval();
    if (IsPolling(state_) && !Busy())
        TransferOnce();
}

void Transfer::ApplyTransferInterval() {
    timers_.ApplyInterval();
}
