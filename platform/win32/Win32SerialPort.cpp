#include "platform/win32/Win32SerialPort.h"

#include "base/RunTimeError.h"

#include <system_error>

namespace platform::win32 {

namespace {

/// A line without handshaking takes bytes at once; a driver that holds them longer takes none.
constexpr DWORD longestWrite_ms = 1000;

FileHandle MakeEvent() {
    // An event that could not be made is a null handle, not the invalid one.
    const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (event == nullptr)
        throw RunTimeError("The system has no room for another event");
    return FileHandle(event);
}

std::string WhyNotOpen(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "the port is not connected";
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
        return "the port is in use by another program";
    default:
        return std::system_category().message(static_cast<int>(error));
    }
}

OVERLAPPED Signalling(HANDLE event) {
    OVERLAPPED operation{};
    operation.hEvent = event;
    return operation;
}

} // namespace

SerialPort::SerialPort() : arrival_(MakeEvent()), finished_(MakeEvent()) {}

void SerialPort::Open(const std::string& device, std::uint32_t bitRate) {
    Close();
    device_ = FileHandle(::CreateFileA(device.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                       OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    if (!device_.IsOpen())
        throw RunTimeError(WhyNotOpen(::GetLastError()));
    Configure(bitRate);
    SetTimeouts({});
    ::PurgeComm(device_.Get(), PURGE_RXCLEAR | PURGE_TXCLEAR);
    listening_ =
        ::SetCommMask(device_.Get(), EV_RXCHAR | EV_ERR) ? Listening::byEvent : Listening::byByte;
    Listen();
}

void SerialPort::Configure(std::uint32_t bitRate) {
    DCB state{};
    state.DCBlength = sizeof state;
    if (!::GetCommState(device_.Get(), &state))
        throw RunTimeError("it is not a serial device");
    state.BaudRate = bitRate;
    state.ByteSize = 8;
    state.Parity = NOPARITY;
    state.StopBits = ONESTOPBIT;
    state.fBinary = TRUE;
    state.fParity = FALSE;
    state.fNull = FALSE;
    state.fErrorChar = FALSE;
    state.fAbortOnError = FALSE;
    state.fOutxCtsFlow = FALSE;
    state.fOutxDsrFlow = FALSE;
    state.fDsrSensitivity = FALSE;
    state.fOutX = FALSE;
    state.fInX = FALSE;
    // Both lines on, as other systems have them: they feed some adapters.
    state.fDtrControl = DTR_CONTROL_ENABLE;
    state.fRtsControl = RTS_CONTROL_ENABLE;
    if (!::SetCommState(device_.Get(), &state))
        throw RunTimeError("the line format " + std::to_string(bitRate) + ",N,8,1 is not possible");
}

void SerialPort::Close() {
    if (!IsOpen())
        return;
    if (pending_) {
        // The operation writes into this object until it has ended.
        ::SetCommMask(device_.Get(), 0);
        ::CancelIoEx(device_.Get(), &wait_);
        DWORD count = 0;
        ::GetOverlappedResult(device_.Get(), &wait_, &count, TRUE);
        pending_ = false;
    }
    ::PurgeComm(device_.Get(), PURGE_TXABORT | PURGE_RXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR);
    device_.Close();
    ::ResetEvent(arrival_.Get());
}

void SerialPort::Listen() {
    if (listening_ == Listening::byEvent && ListenByEvent())
        return;
    listening_ = Listening::byByte;
    ListenByByte();
}

bool SerialPort::ListenByEvent() {
    ::ResetEvent(arrival_.Get());
    wait_ = Signalling(arrival_.Get());
    pending_ =
        ::WaitCommEvent(device_.Get(), &eventMask_, &wait_) || ::GetLastError() == ERROR_IO_PENDING;
    return pending_;
}

void SerialPort::ListenByByte() {
    ::ResetEvent(arrival_.Get());
    wait_ = Signalling(arrival_.Get());
    pending_ = ::ReadFile(device_.Get(), &byte_, 1, nullptr, &wait_) ||
               ::GetLastError() == ERROR_IO_PENDING;
    if (!pending_)
        ::SetEvent(arrival_.Get()); // somebody is to see that the device has gone
}

bool SerialPort::TakeArrived(std::vector<std::uint8_t>& bytes) {
    if (!IsOpen() || (pending_ && !HasOverlappedIoCompleted(&wait_)))
        return true;
    if (!EndListening(bytes))
        return false;
    // The order keeps bytes from being missed: an event tells of what comes after it was asked
    // for; a byte that is being read would be taken before those in the queue.
    if (listening_ == Listening::byEvent) {
        Listen();
        return ReadQueued(bytes);
    }
    const bool there = ReadQueued(bytes);
    if (there)
        Listen();
    return there;
}

/// Sees how the wait has ended; false when the device has gone.
bool SerialPort::EndListening(std::vector<std::uint8_t>& bytes) {
    DWORD count = 0;
    // A read whose time is over has ended as well; not every driver counts that as success.
    const bool listened =
        pending_ && (::GetOverlappedResult(device_.Get(), &wait_, &count, FALSE) ||
                     ::GetLastError() == ERROR_TIMEOUT);
    pending_ = false;
    if (listened && listening_ == Listening::byByte && count == 1)
        bytes.push_back(byte_);
    if (listened)
        return true;
    if (listening_ == Listening::byByte || HasGone())
        return false;
    listening_ = Listening::byByte; // the driver has promised an event that it does not have
    return true;
}

/// Reads as many bytes as the queue holds, so that the read ends at once, whatever the time-outs.
bool SerialPort::ReadQueued(std::vector<std::uint8_t>& bytes) {
    DWORD errors = 0;
    COMSTAT state{};
    if (!::ClearCommError(device_.Get(), &errors, &state))
        return !HasGone();
    if (state.cbInQue == 0)
        return true;
    const auto before = bytes.size();
    bytes.resize(before + state.cbInQue);
    OVERLAPPED read = Signalling(finished_.Get());
    DWORD count = 0;
    const bool started =
        ::ReadFile(device_.Get(), bytes.data() + before, state.cbInQue, nullptr, &read) ||
        ::GetLastError() == ERROR_IO_PENDING;
    const bool done = started && ::GetOverlappedResult(device_.Get(), &read, &count, TRUE);
    bytes.resize(before + count);
    return done || !HasGone();
}

void SerialPort::ClearInput() {
    ::PurgeComm(device_.Get(), PURGE_RXCLEAR);
}

DWORD SerialPort::Write(std::span<const std::uint8_t> bytes) {
    OVERLAPPED write = Signalling(finished_.Get());
    DWORD count = 0;
    const auto size = static_cast<DWORD>(bytes.size());
    if (!::WriteFile(device_.Get(), bytes.data(), size, nullptr, &write) &&
        ::GetLastError() != ERROR_IO_PENDING)
        return ::GetLastError();
    if (::WaitForSingleObject(finished_.Get(), longestWrite_ms) != WAIT_OBJECT_0)
        ::CancelIoEx(device_.Get(), &write);
    if (!::GetOverlappedResult(device_.Get(), &write, &count, TRUE))
        return ::GetLastError();
    return count == size ? ERROR_SUCCESS : ERROR_TIMEOUT;
}

bool SerialPort::HasGone() const {
    DCB state{};
    state.DCBlength = sizeof state;
    return !::GetCommState(device_.Get(), &state);
}

CommTimeouts SerialPort::Timeouts() const {
    COMMTIMEOUTS record{};
    if (!::GetCommTimeouts(device_.Get(), &record))
        return {};
    return {record.ReadIntervalTimeout, record.ReadTotalTimeoutMultiplier,
            record.ReadTotalTimeoutConstant, record.WriteTotalTimeoutMultiplier,
            record.WriteTotalTimeoutConstant};
}

void SerialPort::SetTimeouts(const CommTimeouts& timeouts) {
    COMMTIMEOUTS record{};
    record.ReadIntervalTimeout = timeouts.readInterval;
    record.ReadTotalTimeoutMultiplier = timeouts.readTotalMultiplier;
    record.ReadTotalTimeoutConstant = timeouts.readTotalConstant;
    record.WriteTotalTimeoutMultiplier = timeouts.writeTotalMultiplier;
    record.WriteTotalTimeoutConstant = timeouts.writeTotalConstant;
    if (!::SetCommTimeouts(device_.Get(), &record))
        throw RunTimeError("Setting the port's time-outs failed");
}

} // namespace platform::win32
