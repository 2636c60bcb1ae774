#pragma once

#include "platform/WaitingSerialControl.h"
#include "platform/win32/Win32SerialPort.h"

namespace platform {

/// A serial port of the system.
class Win32SerialControl : public WaitingSerialControl {
public:
    void SetCommPort(int number) override { commPort_ = number; }
    int CommPort() const override { return commPort_; }
    void SetSettings(const std::string& settings) override { settings_ = settings; }
    void SetPortOpen(bool open) override;
    bool PortOpen() const override { return port_.IsOpen(); }
    bool DeviceChanged() const override;
    void SetBufferSize(std::size_t bytes) override { bufferSize_ = bytes; }
    void SetRThreshold(int bytes) override { threshold_ = bytes; }
    int RThreshold() const override { return threshold_; }
    std::size_t InBufferCount() const override;
    void ClearInBuffer() override;
    std::vector<std::uint8_t> Input(std::size_t count) override;
    void Output(std::span<const std::uint8_t> bytes) override;

    /// What the driver of the open port has; of a closed port what was set last.
    CommTimeouts GetCommTimeouts() const override;
    void SetCommTimeouts(const CommTimeouts& timeouts) override;

    HANDLE Arrival() const override { return port_.Arrival(); }
    void Deliver() override;

private:
    void Open();
    void Close();
    void Collect() const;
    void TakeFromPort() const;

    // What counts as received must not depend on who looks first, so that const functions look,
    // too.
    mutable win32::SerialPort port_;
    mutable std::vector<std::uint8_t> input_;
    mutable bool lost_ = false;

    int commPort_ = 1;
    std::string settings_ = "9600,N,8,1";
    std::size_t bufferSize_ = 256;
    int threshold_ = 0;
    CommTimeouts timeouts_;
    mutable bool untold_ = false; ///< bytes have been taken that no arrival was told of
    bool lossTold_ = false;
    unsigned opening_ = 0; ///< counts the openings, so that no event of an earlier one is delivered
};

} // namespace platform
