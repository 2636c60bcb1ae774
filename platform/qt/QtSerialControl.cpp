#include "platform/qt/QtSerialControl.h"

#include "base/PortName.h"
#include "base/RunTimeError.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "platform/qt/Text.h"

#include <QFileInfo>
#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace platform {
namespace {

constexpr std::string_view lineFormat = ",N,8,1";

std::intptr_t HandleOf(const QSerialPort& port) {
    return port.handle();
}

} // namespace

QtSerialControl::QtSerialControl(QObject* parent) : QObject(parent) {
    connect(&port_, &QSerialPort::readyRead, this, &QtSerialControl::PostDelivery);
    connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialControl::ErrorOccurred);
}

QtSerialControl::~QtSerialControl() {
    port_.disconnect(this);
    Close();
}

/// The device that the number stands for; empty where there is none. Locks go by the device's own
/// name, so that a link to it is no way around them.
QString QtSerialControl::DeviceOfNumber() const {
    const auto named =
        QString::fromStdString(DeviceOfPort(commPort_, Current().places.ConfigurationFolder()));
    const auto resolved = QFileInfo(named).canonicalFilePath();
    return resolved.isEmpty() ? named : resolved;
}

bool QtSerialControl::DeviceChanged() const {
    return port_.isOpen() &&
           (lost_ || DeviceHasGone(HandleOf(port_)) || DeviceOfNumber() != device_);
}

void QtSerialControl::SetPortOpen(bool open) {
    if (open == port_.isOpen())
        return;
    if (open)
        Open();
    else
        Close();
}

void QtSerialControl::Open() {
    const auto device = DeviceOfNumber();
    if (device.isEmpty())
        RefuseOpening("there is no such port");
    if (const auto reason = WhyDeviceCannotOpen(device.toStdString()); !reason.empty())
        RefuseOpening(Text::ForMessage(QString::fromStdString(reason)));
    ApplySettings();
    port_.setPortName(device);
    if (!port_.open(QIODevice::ReadWrite)) {
        RefuseOpening(port_.error() == QSerialPort::PermissionError
                          ? Text::ForMessage(QString::fromStdString(InUse(device.toStdString())))
                          : Text::ForMessage(device) + ": " +
                                Text::ForMessage(port_.errorString()));
    }
    claim_ = ClaimDevice(HandleOf(port_));
    if (!claim_)
        RefuseOpening(Text::ForMessage(QString::fromStdString(InUse(device.toStdString()))));
    port_.clear();
    device_ = device;
    lost_ = false;
    ++opening_;
    input_.clear();
}

void QtSerialControl::ApplySettings() {
    const auto comma = settings_.find(',');
    const auto bitRate = QString::fromStdString(settings_.substr(0, comma)).toInt();
    if (comma == std::string::npos || settings_.substr(comma) != lineFormat || bitRate <= 0 ||
        !port_.setBaudRate(bitRate))
        RefuseOpening("the line format " + settings_ + " is not possible");
    port_.setParity(QSerialPort::NoParity);
    port_.setDataBits(QSerialPort::Data8);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialControl::RefuseOpening(const std::string& reason) {
    Close();
    throw RunTimeError("Opening " + PortName::Of(commPort_) + ": " + reason);
}

void QtSerialControl::Close() {
    ++opening_;
    input_.clear();
    deliveryPosted_ = false;
    claim_.reset();
    if (!port_.isOpen())
        return;
    if (!lost_)
        port_.clear(); // else closing would wait for bytes that a stopped line does not take
    port_.close();
}

std::size_t QtSerialControl::InBufferCount() const {
    TakeFromPort();
    return input_.size();
}

void QtSerialControl::TakeFromPort() const {
    if (!port_.isOpen())
        return;
    const QByteArray bytes = port_.readAll();
    input_.insert(input_.end(), bytes.begin(), bytes.end());
    if (input_.size() > bufferSize_)
        input_.resize(bufferSize_); // as a driver does, the bytes that find no place are lost
}

void QtSerialControl::ClearInBuffer() {
    if (port_.isOpen() && !lost_)
        port_.clear(QSerialPort::Input);
    input_.clear();
}

std::vector<std::uint8_t> QtSerialControl::Input(std::size_t count) {
    TakeFromPort();
    const auto taken = static_cast<std::ptrdiff_t>(std::min(count, input_.size()));
    std::vector<std::uint8_t> bytes(input_.begin(), input_.begin() + taken);
    input_.erase(input_.begin(), input_.begin() + taken);
    return bytes;
}

void QtSerialControl::Output(std::span<const std::uint8_t> bytes) {
    port_.clearError();
    const auto size = static_cast<qint64>(bytes.size());
    const bool written =
        !lost_ && port_.write(reinterpret_cast<const char*>(bytes.data()), size) == size;
    port_.flush();
    if (!written || lost_)
        throw RunTimeError("Writing to " + PortName::Of(commPort_) + ": " +
                           (lost_ ? "the port has gone" : Text::ForMessage(port_.errorString())));
}

// A terminal's driver keeps no such record; nothing here waits inside a read or a write.
void QtSerialControl::SetCommTimeouts(const CommTimeouts& timeouts) {
    timeouts_ = timeouts;
}

void QtSerialControl::ErrorOccurred(QSerialPort::SerialPortError error) {
    const bool mayBeGone = error == QSerialPort::ResourceError || error == QSerialPort::ReadError;
    if (!mayBeGone || lost_ || !port_.isOpen())
        return;
    if (DeviceHasGone(HandleOf(port_))) {
        lost_ = true;
        PostDelivery();
        return;
    }
    // The port takes a read without bytes for a loss, and stops listening. That happens when the
    // input is emptied just after the system has announced bytes; reading makes it listen again.
    char nothing = 0;
    port_.read(&nothing, 0);
}

void QtSerialControl::PostDelivery() {
    if (std::exchange(deliveryPosted_, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this, opening = opening_] {
            if (opening == opening_)
                Guard([this] { Deliver(); });
        },
        Qt::QueuedConnection);
}

void QtSerialControl::Deliver() {
    deliveryPosted_ = false;
    const auto opening = opening_;
    TakeFromPort();
    if (OnArrival)
        OnArrival();
    if (opening != opening_)
        return;
    if (OnComm && threshold_ > 0 && InBufferCount() >= static_cast<std::size_t>(threshold_))
        OnComm(Event::receive);
    if (OnComm && lost_ && opening == opening_)
        OnComm(Event::portLost);
}

} // namespace platform
