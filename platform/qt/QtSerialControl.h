#pragma once

#include "platform/SerialControl.h"
#include "platform/SerialDevice.h"

#include <QSerialPort>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// A serial port of the system. Handlers are called from the event loop alone, never from within
/// the port's own signals, so that a handler may close the port or show a box.
class QtSerialControl : public QObject, public SerialControl {
    Q_OBJECT

public:
    explicit QtSerialControl(QObject* parent = nullptr);
    ~QtSerialControl() override;

    void SetCommPort(int number) override { commPort_ = number; }
    int CommPort() const override { return commPort_; }
    void SetSettings(const std::string& settings) override { settings_ = settings; }
    void SetPortOpen(bool open) override;
    bool PortOpen() const override { return port_.isOpen(); }
    bool DeviceChanged() const override;
    void SetBufferSize(std::size_t bytes) override { bufferSize_ = bytes; }
    void SetRThreshold(int bytes) override { threshold_ = bytes; }
    int RThreshold() const override { return threshold_; }
    std::size_t InBufferCount() const override;
    void ClearInBuffer() override;
    std::vector<std::uint8_t> Input(std::size_t count) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    CommTimeouts GetCommTimeouts() const override { return timeouts_; }
    void SetCommTimeouts(const CommTimeouts& timeouts) override;

    /// Runs what an event calls; a form puts its guard here.
    std::function<void(const std::function<void()>&)> Guard =
        [](const std::function<void()>& handler) { handler(); };

private:
    void Open();
    void Close();
    void ApplySettings();
    [[noreturn]] void RefuseOpening(const std::string& reason);
    void TakeFromPort() const;
    void PostDelivery();
    void Deliver();
    void ErrorOccurred(QSerialPort::SerialPortError error);
    QString DeviceOfNumber() const;

    // The port's own buffer is emptied into this one whenever somebody looks, also from const
    // functions: what counts as received must not depend on who looks first.
    mutable QSerialPort port_{this};
    mutable std::vector<std::uint8_t> input_;

    QString device_; ///< of the port that was opened last
    std::unique_ptr<DeviceClaim> claim_;
    int commPort_ = 1;
    std::string settings_ = "9600,N,8,1";
    std::size_t bufferSize_ = 256;
    int threshold_ = 0;
    CommTimeouts timeouts_;
    unsigned opening_ = 0; ///< counts the openings, so that no event of an earlier one is delivered
    bool deliveryPosted_ = false;
    bool lost_ = false;
};

} // namespace platform
