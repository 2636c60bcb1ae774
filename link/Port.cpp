#include "link/Port.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"

platform::SerialControl& Port::Control() const {
    if (!control_)
        throw RunTimeError("The serial port is not set up");
    return *control_;
}

void Port::Open(const PortChoice& choice) {
    auto& control = Control();
    if (control.PortOpen())
        control.SetPortOpen(false);
    if (choice.BitRate <= 0)
        throw RunTimeError("Opening " + PortName::Of(choice.PortNumber) + ": a bit rate of " +
                           NumberText::Plain(choice.BitRate) + " is not possible");
    control.SetSettings(LineFormat(choice.BitRate));
    control.SetCommPort(choice.PortNumber);
    control.SetBufferSize(inputBufferSize);
    control.SetRThreshold(0);
    control.SetPortOpen(true);
}

void Port::SetTimeouts(std::int32_t bitRate) {
    if (IsOpen() && bitRate > 0)
        Control().SetCommTimeouts(TimeoutsFor(bitRate));
}

void Port::OpenWithTimeouts(const PortChoice& choice) {
    PortOK = false;
    Open(choice);
    SetTimeouts(choice.BitRate);
    PortOK = true;
}

void Port::OpenWhatStandsFor(const PortChoice& choice) {
    auto& control = Control();
    if (!control.PortOpen() || control.CommPort() != choice.PortNumber || control.DeviceChanged())
        OpenWithTimeouts(choice);
}

void Port::Close() {
    if (IsOpen())
        control_->SetPortOpen(false);
}

void Port::SetThreshold(std::size_t bytes) {
    if (IsOpen())
        control_->SetRThreshold(static_cast<int>(bytes));
}

void Port::Scan() {
    auto& control = Control();
    const auto portInUse = control.CommPort();
    Close();
    for (int n = 1; n <= maxPortNumber; ++n)
        Try(n);
    if (portInUse > 0)
        control.SetCommPort(portInUse);
}

void Port::Try(int number) {
    auto& control = Control();
    const auto index = static_cast<std::size_t>(number);
    problem_[index].clear();
    PortAvailable[index] = false;
    try {
        control.SetCommPort(number);
        control.SetPortOpen(true);
        PortAvailable[index] = true;
        control.SetPortOpen(false);
    } catch (const RunTimeError& error) {
        problem_[index] = error.what();
    }
}

bool Port::IsAvailable(int number) const {
    const auto index = static_cast<std::size_t>(number);
    return index < PortAvailable.size() && PortAvailable[index];
}

std::vector<std::string> Port::AvailablePorts() const {
    std::vector<std::string> names;
    for (std::size_t n = 1; n < PortAvailable.size(); ++n) {
        if (PortAvailable[n])
            names.push_back(PortName::Of(static_cast<int>(n)));
    }
    return names;
}

const std::string& Port::Problem(int number) const {
    return problem_.at(static_cast<std::size_t>(number));
}
