#include "platform/win32/Win32SerialControl.h"

#include "base/PortName.h"
#include "base/RunTimeError.h"
#include "platform/System.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform {
namespace {

/// The bit rate of a line format; 0 for a format that is not possible.
std::uint32_t BitRateOf(const std::string& settings) {
    constexpr std::string_view lineFormat = ",N,8,1";
    std::uint32_t bitRate = 0;
    const auto* const end = settings.data() + settings.size();
    const auto read = std::from_chars(settings.data(), end, bitRate);
    return std::string_view(read.ptr, end) == lineFormat ? bitRate : 0;
}

} // namespace

bool Win32SerialControl::DeviceChanged() const {
    return port_.IsOpen() && (lost_ || port_.HasGone());
}

void Win32SerialControl::SetPortOpen(bool open) {
    if (open == port_.IsOpen())
        return;
    if (open)
        Open();
    else
        Close();
}

void Win32SerialControl::Open() {
    const auto place = "Opening " + PortName::Of(commPort_) + ": ";
    const std::string device = DeviceOfPort(commPort_, {});
    if (device.empty())
        throw RunTimeError(place + "there is no such port");
    const std::uint32_t bitRate = BitRateOf(settings_);
    if (bitRate == 0)
        throw RunTimeError(place + "the line format " + settings_ + " is not possible");
    ++opening_;
    input_.clear();
    lost_ = untold_ = lossTold_ = false;
    try {
        port_.Open(device, bitRate);
    } catch (const RunTimeError& reason) {
        Close();
        throw RunTimeError(place + reason.what());
    }
}

void Win32SerialControl::Close() {
    ++opening_;
    input_.clear();
    port_.Close();
}

std::size_t Win32SerialControl::InBufferCount() const {
    TakeFromPort();
    return input_.size();
}

void Win32SerialControl::Collect() const {
    if (!port_.IsOpen() || lost_)
        return;
    const auto before = input_.size();
    lost_ = !port_.TakeArrived(input_);
    untold_ = untold_ || input_.size() > before;
    if (input_.size() > bufferSize_)
        input_.resize(bufferSize_); // as a driver does, the bytes that find no place are lost
}

/// What is learnt here is told of later, by Deliver.
void Win32SerialControl::TakeFromPort() const {
    Collect();
    if (untold_ || (lost_ && !lossTold_))
        ::SetEvent(port_.Arrival());
}

void Win32SerialControl::ClearInBuffer() {
    TakeFromPort();
    if (port_.IsOpen() && !lost_)
        port_.ClearInput();
    input_.clear();
}

std::vector<std::uint8_t> Win32SerialControl::Input(std::size_t count) {
    TakeFromPort();
    const auto taken = static_cast<std::ptrdiff_t>(std::min(count, input_.size()));
    std::vector<std::uint8_t> bytes(input_.begin(), input_.begin() + taken);
    input_.erase(input_.begin(), input_.begin() + taken);
    return bytes;
}

void Win32SerialControl::Output(std::span<const std::uint8_t> bytes) {
    const DWORD error = lost_ ? ERROR_SUCCESS : port_.Write(bytes);
    if (error == ERROR_SUCCESS && !lost_)
        return;
    const bool gone = lost_ || port_.HasGone();
    throw RunTimeError(
        "Writing to " + PortName::Of(commPort_) + ": " +
        (gone ? "the port has gone" : std::system_category().message(static_cast<int>(error))));
}

CommTimeouts Win32SerialControl::GetCommTimeouts() const {
    return port_.IsOpen() ? port_.Timeouts() : timeouts_;
}

void Win32SerialControl::SetCommTimeouts(const CommTimeouts& timeouts) {
    timeouts_ = timeouts;
    if (port_.IsOpen())
        port_.SetTimeouts(timeouts);
}

void Win32SerialControl::Deliver() {
    const auto opening = opening_;
    ::ResetEvent(port_.Arrival());
    Collect();
    const bool arrived = std::exchange(untold_, false);
    if (arrived && OnArrival)
        OnArrival();
    if (opening != opening_)
        return;
    if (arrived && OnComm && threshold_ > 0 &&
        InBufferCount() >= static_cast<std::size_t>(threshold_))
        OnComm(Event::receive);
    if (OnComm && lost_ && opening == opening_ && !std::exchange(lossTold_, true))
        OnComm(Event::portLost);
}

std::unique_ptr<WaitingSerialControl> MakeWaitingSerialControl() {
    return std::make_unique<Win32SerialControl>();
}

} // namespace platform
