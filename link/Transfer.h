#pragma once

#include "base/LocalTime.h"
#include "link/ChannelReader.h"
#include "link/Commands.h"
#include "link/Controls.h"
#include "link/FrameStream.h"
#include "link/LinkStatus.h"
#include "link/Port.h"
#include "link/TransferState.h"
#include "link/TransferTimers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace CommPort {

/// What the link has done since reading began. While the message about a bad frame is open the
/// state is `waiting`, so that no screen puts its own message on top of it; then it is `failed`.
enum class LinkState { waiting, answered, failed };

} // namespace CommPort

/// The exchange of frames over an open port: one state machine driven by events. A call starts a
/// transfer and returns, arrivals and timers carry it on, and no call waits for the instrument.
/// Only the message about a bad frame waits, for its answer; events run meanwhile.
class Transfer {
public:
    using AfterFailure = TransferState::AfterFailure;

    /// All of them must outlive the transfer.
    Transfer(Port& port, const PortChoice& choice, const CommPort::Controls& controls,
             LinkStatus& status)
        : port_(port), choice_(choice), timers_(controls), status_(status) {}
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// Values of the latest frame: slots 0..7 in frame order (E1, T1, ... E4, T4), 8..11 stay 0.
    CycleValues Readings{};

    /// The wait for a frame has expired and is being judged.
    bool TimedOut = false;

    Commands commands;

    /// A transfer is under way: a request is out, or the message about a bad frame is open. Frames
    /// that the instrument sends by itself are no answer meanwhile.
    bool Busy() const;

    CommPort::LinkState Outcome() const;

    /// The link has failed since reading began, even if a good frame has come since; false while
    /// the message about a bad frame is open.
    bool HasFailed() const { return state_ == TransferState::State::failed; }

    /// The link has failed, and the screen asks on until the instrument answers again.
    bool IsLost() const;

    /// A screen reads, and the link has not failed.
    bool IsReading() const;

    /// When the last good frame came.
    const std::optional<LocalTime>& LastReading() const { return lastReading_; }

    /// How often the link was lost, and when the last good frame before the last loss came; nothing
    /// where none had come since reading began. A loss may be over before a screen looks.
    unsigned Losses() const { return losses_; }
    const std::optional<LocalTime>& LastReadingBeforeLoss() const { return beforeLoss_; }

    /// A screen starts to read. What an earlier reading left (request, time-out, failure, bytes) is
    /// ended, the device that the port's name stands for now is opened, the first request goes out
    /// at once, and polling goes on from then on. While the message about a bad frame is open all
    /// that waits for its answer. A start that fails closes the port again.
    void BeginReading();

    /// No screen reads any more; a request that is out is left to end.
    void EndReading();

    /// `stop` unless chosen; takes effect at once, also on a link that is lost.
    void SetAfterFailure(AfterFailure choice);

    /// Starts one transfer: empties the input buffer, requests a frame and waits for it by events.
    /// A port that is closed or has gone fails the link. After a failure, and while the message is
    /// open, it does nothing.
    void TransferOnce();

    /// Writes a command in one write. Throws RunTimeError when the port has gone.
    void SendCommand(std::string_view command);

    /// Judges what has arrived for the request that is out.
    void ReceiveFrame();

    /// Turns the frame received last into Readings 0..7.
    void DecodeFrame();

    /// The port is closed, opened or about to be: a request that is out is forgotten.
    void Cancel();

    /// After another opening of the port: a screen that reads is sent frames again, and where none
    /// does, what an earlier one met is past.
    void PortOpened();

    /// Where nothing is under way, what an earlier transfer met is past.
    void ForgetOutcome();

    /// The link has failed, with this reason.
    void Fail(const std::string& reason);

    void tmrTimeout_Timer();
    void tmrTransferInterval_Timer();
    void MSComm1_OnComm(platform::SerialControl::Event event);
    void MSComm1_OnArrival();

    /// The interval controls were changed: polling goes on with the new interval.
    void ApplyTransferInterval();

private:
    void Move(TransferState::Event event);
    void Move(TransferState::Event event, CommPort::LinkState outcome);
    void SetTimers();
    bool OpenPort();
    void StartReading(TransferState::Event event);
    void StartRequest();
    void TakeArrived();
    void TakeFrame();
    void TakeBadFrame();
    void ShowBadFrameMessage(const std::string& text);
    void MessageAnswered();
    void DropOverflow();
    void FailPort(const char* what);

    Port& port_;
    const PortChoice& choice_;
    TransferTimers timers_;
    LinkStatus& status_;

    TransferState::State state_ = TransferState::State::idle;
    AfterFailure afterFailure_ = AfterFailure::stop;
    CommPort::LinkState outcome_ = CommPort::LinkState::waiting; ///< what came last
    FrameStream stream_;
    std::optional<LocalTime> lastReading_;
    std::optional<LocalTime> beforeLoss_;
    unsigned losses_ = 0;
};
