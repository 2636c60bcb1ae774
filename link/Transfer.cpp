#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "link/LinkData.h"
#include "platform/Platform.h"

#include <algorithm>
#include <limits>

namespace CommPort {

using internal::Data;

std::array<float, cyclePositions> Readings{};
bool Busy = false;
bool TimedOut = false;
std::array<std::uint8_t, 2> InstrumentAddress{};

namespace {

constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t startOfText = 0x02;
constexpr std::uint8_t cancel = 0x18;
constexpr int frameThreshold = static_cast<int>(Frame::length);

std::string WithMoment(const char* text) {
    return text + DateText::General(platform::Current().clock.Now());
}

std::string DecimalText(std::uint8_t byte) {
    return NumberText::Plain(std::int32_t{byte});
}

void EnableTimeout(bool enabled) {
    auto* timer = Data().controls.tmrTimeout;
    if (!timer)
        return;
    if (enabled)
        timer->SetInterval(transferTimeout);
    timer->SetEnabled(enabled);
}

void EnablePolling(bool enabled) {
    if (auto* timer = Data().controls.tmrTransferInterval)
        timer->SetEnabled(enabled);
}

void SetThreshold() {
    if (internal::PortIsOpen())
        internal::Control().SetRThreshold(Data().reading ? frameThreshold : 0);
}

void EmptyInput() {
    if (internal::PortIsOpen())
        internal::Control().ClearInBuffer();
    Data().unsolicited.clear();
    Data().outOfStep = false;
}

/// Holds back requests and other messages while the box is open.
class MessageOpen {
public:
    MessageOpen() { Data().messageOpen = true; }
    ~MessageOpen() { Data().messageOpen = false; }
    MessageOpen(const MessageOpen&) = delete;
    MessageOpen& operator=(const MessageOpen&) = delete;
};

/// Shows the message about a frame without EOT and fails the link with its answer.
void ShowBadFrameMessage(const std::string& text) {
    const auto session = Data().session;
    internal::SetState(LinkState::waiting);
    Data().failedMeanwhile = false;
    {
        const MessageOpen open;
        Mcommon::MessageBoxEx(text, platform::style::okOnly, platform::style::exclamation);
    }
    if (Data().session == session || Data().failedMeanwhile)
        internal::SetState(LinkState::failed);
}

/// Forgets the input when the buffer ran full while the message was open: it then has a gap.
void DropOverflow() {
    if (!internal::PortIsOpen() || internal::Control().InBufferCount() < internal::inputBufferSize)
        return;
    EmptyInput();
    Data().outOfStep = true;
}

void ReportBadFrame(bool asked) {
    const auto text = WithMoment("Data transmission uncompleted: ");
    internal::SetStatus(text);
    // An instrument that keeps sending nonsense by itself is reported once, not frame by frame.
    if (asked || Data().state != LinkState::failed)
        ShowBadFrameMessage(text);
    Data().outOfStep = true;
    DropOverflow();
}

/// Judges the 48 bytes of the receive buffer; false when they are no whole frame.
bool AcceptFrame(bool asked) {
    if (!Frame::IsComplete(Data().receiveBuffer)) {
        ReportBadFrame(asked);
        return false;
    }
    DecodeFrame();
    internal::SetState(LinkState::answered);
    return true;
}

void TakeUnsolicitedFrames();

/// The polled transfer is over, in whatever way.
void EndTransfer(unsigned session) {
    if (Data().status.empty())
        internal::SetStatus(WithMoment("Data transfer completed: "));
    Busy = false;
    // A screen that began to read while the message was open still waits for its first request.
    if (Data().reading && Data().session != session)
        TransferOnce();
    else
        TakeUnsolicitedFrames();
}

void TakePolledFrame() {
    EnableTimeout(false);
    Data().waiting = false;
    TimedOut = false;
    const auto session = Data().session;
    const auto bytes = internal::Control().Input(Frame::length);
    std::copy_n(bytes.begin(), std::min(bytes.size(), Frame::length), Data().receiveBuffer.begin());
    // The next frame may have begun within the bad one.
    Data().unsolicited.assign(bytes.begin(), bytes.end());
    if (AcceptFrame(true))
        Data().unsolicited.clear();
    EndTransfer(session);
}

/// Drops what belongs to a frame whose start was lost: everything up to the next EOT.
void DropThroughEot() {
    auto& bytes = Data().unsolicited;
    const auto eot = std::find(bytes.begin(), bytes.end(), Frame::endOfTransmission);
    Data().outOfStep = eot == bytes.end();
    bytes.erase(bytes.begin(), Data().outOfStep ? eot : eot + 1);
}

/// Takes the next 48 bytes that nobody asked for; false when there are not so many.
bool TakeUnsolicitedFrame() {
    auto& bytes = Data().unsolicited;
    if (Data().outOfStep)
        DropThroughEot();
    if (bytes.size() < Frame::length)
        return false;
    std::copy_n(bytes.begin(), Frame::length, Data().receiveBuffer.begin());
    if (Frame::IsComplete(Data().receiveBuffer))
        bytes.erase(bytes.begin(), bytes.begin() + frameThreshold);
    AcceptFrame(false);
    return true;
}

void TakeUnsolicitedFrames() {
    if (Busy || Data().messageOpen || !Data().reading || !internal::PortIsOpen())
        return;
    auto& control = internal::Control();
    const bool frameBegun = !Data().unsolicited.empty() || Data().outOfStep;
    if (!frameBegun && control.InBufferCount() < Frame::length)
        return;
    control.SetRThreshold(0);
    const auto bytes = control.Input(control.InBufferCount());
    Data().unsolicited.insert(Data().unsolicited.end(), bytes.begin(), bytes.end());
    while (TakeUnsolicitedFrame()) {
    }
    SetThreshold();
}

/// Without the port there is nothing to poll until reading starts anew.
void FailPort(const char* what) {
    internal::CancelTransfer();
    EnablePolling(false);
    if (internal::PortIsOpen())
        internal::Control().SetPortOpen(false);
    PortOK = false;
    Data().unsolicited.clear();
    internal::Fail("COM" + NumberText::Plain(std::int32_t{PortNumber}) + WithMoment(what));
}

/// The wait has expired with fewer than 48 bytes.
void ReportTimeout() {
    const bool nothingCame = internal::Control().InBufferCount() == 0;
    internal::Fail(
        WithMoment(nothingCame ? "System not responding: " : "Data transmission Timeout Error: "));
}

} // namespace

namespace internal {

void CancelTransfer() {
    EnableTimeout(false);
    Data().waiting = false;
    // The bad frame's transfer ends with the answer to its message, not before.
    if (!Data().messageOpen)
        Busy = false;
    TimedOut = false;
}

} // namespace internal

void SendCommand(std::string_view command) {
    const auto& address = InstrumentAddress;
    auto& bytes = Data().lastCommand;
    std::string addressed = DecimalText(startOfHeading);
    addressed += DecimalText(address[0]);
    addressed += DecimalText(address[1]);
    addressed += DecimalText(startOfText);
    if (command == addressed)
        bytes = {startOfHeading, address[0], address[1], startOfText};
    else if (command == "2")
        bytes = {startOfText};
    else if (command == "24")
        bytes = {cancel};
    if (!bytes.empty())
        internal::Control().Output(bytes);
}

void TransferOnce() {
    if (!internal::PortIsOpen()) {
        FailPort(" is not open: ");
        return;
    }
    Busy = true;
    internal::SetStatus("");
    EmptyInput(); // before the request, so that an instant answer is not thrown away
    try {
        SendCommand("2");
    } catch (const RunTimeError& error) {
        FailPort(" was lost: ");
        internal::SetStatus(error.what());
        return;
    }
    ReceiveFrame();
}

void ReceiveFrame() {
    EnableTimeout(true);
    TimedOut = false;
    Data().waiting = true;
    MSComm1_OnArrival();
}

void DecodeFrame() {
    const auto values = Frame::Decode(Data().receiveBuffer);
    std::copy(values.begin(), values.end(), Readings.begin());
}

std::chrono::milliseconds TransferInterval(std::int16_t value, std::string_view unit) {
    const int count = std::max<int>(value, 1);
    if (unit == "Hour(s)")
        return std::min<std::chrono::milliseconds>(
            std::chrono::hours(count),
            std::chrono::milliseconds(std::numeric_limits<std::int32_t>::max()));
    if (unit == "Minutes")
        return std::chrono::minutes(count);
    return std::chrono::seconds(count);
}

void ApplyTransferInterval() {
    const auto& controls = Data().controls;
    if (!controls.tmrTransferInterval)
        return;
    const auto value = controls.IntervalValue ? controls.IntervalValue() : std::int16_t{1};
    const auto unit = controls.IntervalUnit ? controls.IntervalUnit() : std::string("seconds");
    const auto interval = TransferInterval(value, unit);
    if (controls.tmrTransferInterval->Interval() != interval)
        controls.tmrTransferInterval->SetInterval(interval);
}

void tmrTimeout_Timer() {
    EnableTimeout(false);
    if (!Data().waiting)
        return;
    TimedOut = true;
    if (internal::Control().InBufferCount() >= Frame::length) {
        TakePolledFrame(); // where both meet the frame counts
        return;
    }
    Data().waiting = false;
    TimedOut = false;
    ReportTimeout();
    Busy = false;
}

void tmrTransferInterval_Timer() {
    ApplyTransferInterval();
    if (!Busy && !Data().messageOpen)
        TransferOnce();
}

void MSComm1_OnComm(platform::SerialControl::Event event) {
    if (event == platform::SerialControl::Event::portLost)
        FailPort(" was lost: ");
    else if (event == platform::SerialControl::Event::receive)
        TakeUnsolicitedFrames();
}

void MSComm1_OnArrival() {
    if (Data().waiting && internal::Control().InBufferCount() >= Frame::length)
        TakePolledFrame();
    else if (!Data().unsolicited.empty() || Data().outOfStep)
        TakeUnsolicitedFrames();
}

void BeginReading() {
    ++Data().session;
    Data().failedMeanwhile = Data().failedSinceBegin = false;
    Data().reading = true;
    internal::SetState(LinkState::waiting);
    try {
        if (!internal::Control().PortOpen())
            internal::OpenWithTimeouts(PortNumber);
    } catch (const RunTimeError& error) {
        internal::Fail(error.what());
        return;
    }
    SetThreshold();
    ApplyTransferInterval();
    EnablePolling(true);
    if (!Busy && !Data().messageOpen)
        TransferOnce();
    internal::TellObservers();
}

void EndReading() {
    Data().reading = false;
    EnablePolling(false);
    SetThreshold();
    Data().unsolicited.clear();
    Data().outOfStep = false;
    internal::TellObservers();
}

} // namespace CommPort
