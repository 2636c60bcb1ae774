#include "link/CommPort.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "link/LinkData.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace CommPort {

using internal::Data;
using internal::LinkData;

std::int32_t BitRate = 9600;
std::int16_t PortNumber = 1;
std::array<bool, maxPortNumber + 1> PortAvailable{};
bool PortOK = false;

namespace {

// The place of the choice in the per-user store.
constexpr const char* application = "CommPort";
constexpr const char* section = "Startup";
constexpr const char* bitRateKey = "BitRate";
constexpr const char* portNumberKey = "PortNumber";

constexpr std::string_view portPrefix = "COM";
constexpr std::chrono::milliseconds initialInterval{1000};

std::string PortName(std::int16_t number) {
    return std::string(portPrefix) + NumberText::Plain(std::int32_t{number});
}

std::int32_t LeadingInteger32(const std::string& text) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(
        std::nearbyint(std::clamp(NumberText::Leading(text), lowest, highest)));
}

/// Tries to open one port for the scan; its failure is kept as the port's problem.
void TryPort(std::int16_t number) {
    auto& control = internal::Control();
    auto& problem = Data().portProblem[static_cast<std::size_t>(number)];
    problem.clear();
    bool& available = PortAvailable[static_cast<std::size_t>(number)];
    available = false;
    try {
        control.SetCommPort(number);
        control.SetPortOpen(true);
        available = true;
        control.SetPortOpen(false);
    } catch (const RunTimeError& error) {
        problem = error.what();
    }
}

/// Back to the port that was open before a scan or a failed test.
void ReopenPort(std::int16_t number) {
    try {
        internal::OpenWithTimeouts(number);
    } catch (const RunTimeError& error) {
        internal::Fail(error.what());
    }
}

void ListPorts() {
    auto& list = Data().portList;
    list.clear();
    for (std::int16_t n = 1; n <= maxPortNumber; ++n) {
        if (PortAvailable[static_cast<std::size_t>(n)])
            list.push_back(PortName(n));
    }
    if (Data().controls.SetPortList)
        Data().controls.SetPortList(list);
}

} // namespace

namespace internal {

void OpenWithTimeouts(std::int16_t portNumber) {
    PortOK = false;
    OpenPort(BitRate, portNumber);
    SetPortTimeouts();
    PortOK = true;
}

} // namespace internal

void Attach(Controls controls) {
    Data().controls = std::move(controls);
    auto& control = internal::Control();
    control.OnComm = [](platform::SerialControl::Event event) { MSComm1_OnComm(event); };
    control.OnArrival = [] { MSComm1_OnArrival(); };
}

void Detach() {
    EndReading();
    internal::CancelTransfer();
    if (auto* control = Data().controls.MSComm1) {
        control->SetPortOpen(false);
        control->OnComm = nullptr;
        control->OnArrival = nullptr;
    }
    PortOK = false;
    Data().controls = {};
}

void LoadPortSettings() {
    const auto& store = platform::Current().userStore;
    BitRate = LeadingInteger32(store.GetSetting(application, section, bitRateKey, "9600"));
    PortNumber =
        NumberText::LeadingInteger(store.GetSetting(application, section, portNumberKey, "1"));
}

void SavePortSettings() {
    auto& store = platform::Current().userStore;
    store.SaveSetting(application, section, bitRateKey, NumberText::Plain(BitRate));
    store.SaveSetting(application, section, portNumberKey,
                      NumberText::Plain(std::int32_t{PortNumber}));
}

void OpenPort(std::int32_t bitRate, std::int16_t portNumber) {
    auto& control = internal::Control();
    internal::CancelTransfer();
    if (control.PortOpen())
        control.SetPortOpen(false);
    if (bitRate <= 0)
        throw RunTimeError("Opening " + PortName(portNumber) + ": a bit rate of " +
                           NumberText::Plain(bitRate) + " is not possible");
    control.SetSettings(NumberText::Plain(bitRate) + ",N,8,1");
    control.SetCommPort(portNumber);
    control.SetBufferSize(internal::inputBufferSize);
    control.SetRThreshold(0);
    control.SetPortOpen(true);
    if (Data().reading)
        control.SetRThreshold(static_cast<int>(Frame::length));
    internal::TellObservers();
}

platform::CommTimeouts TimeoutsFor(std::int32_t bitRate) {
    constexpr std::int32_t tenSeconds_ms = 10000;
    constexpr std::uint32_t constant_ms = 1000;
    // Twice the remainder against the divisor decides, so that ties are exact.
    std::int32_t perByte_ms = tenSeconds_ms / bitRate;
    const std::int64_t twiceRest = std::int64_t{2} * (tenSeconds_ms % bitRate);
    if (twiceRest > bitRate || (twiceRest == bitRate && perByte_ms % 2 != 0))
        ++perByte_ms;
    const auto t = static_cast<std::uint32_t>(perByte_ms);
    return {t, t, constant_ms, t, constant_ms};
}

void SetPortTimeouts() {
    if (!internal::PortIsOpen() || BitRate <= 0)
        return;
    internal::Control().SetCommTimeouts(TimeoutsFor(BitRate));
}

void ScanPorts() {
    auto& control = internal::Control();
    internal::CancelTransfer();
    const bool wasOpen = control.PortOpen();
    const auto portInUse = control.CommPort();
    if (wasOpen)
        control.SetPortOpen(false);
    for (std::int16_t n = 1; n <= maxPortNumber; ++n)
        TryPort(n);
    if (wasOpen)
        ReopenPort(portInUse);
    else if (portInUse > 0)
        control.SetCommPort(portInUse);
    ListPorts();
}

const std::string& PortProblem(std::int16_t number) {
    return Data().portProblem.at(static_cast<std::size_t>(number));
}

void fncInitializeComPort() {
    Readings.fill(0);
    auto& controls = Data().controls;
    if (controls.tmrTransferInterval) {
        controls.tmrTransferInterval->SetEnabled(false);
        controls.tmrTransferInterval->SetInterval(initialInterval);
    }
    LoadPortSettings();
    PortOK = false;
    try {
        OpenPort(BitRate, PortNumber);
        PortOK = true;
    } catch (const RunTimeError& error) {
        internal::Fail(error.what());
    }
    SetBitRateComboBox();
    SetPortComboBox();
    SetPortTimeouts();
}

void fncCheckForValidPort() {
    PortOK = false;
    if (PortNumber < 1) {
        internal::SetStatus("Please select a COM port.");
        return;
    }
    if (PortNumber > maxPortNumber || !PortAvailable[static_cast<std::size_t>(PortNumber)]) {
        internal::SetStatus(PortName(PortNumber) +
                            " is unavailable. Please select a different port.");
        return;
    }
    try {
        internal::OpenWithTimeouts(PortNumber);
    } catch (const RunTimeError& error) {
        internal::SetStatus(error.what());
    }
}

void TestPort(std::int32_t bitRate, std::int16_t portNumber) {
    const bool wasOpen = internal::PortIsOpen();
    const auto formerBitRate = std::exchange(BitRate, bitRate);
    const auto formerPort = std::exchange(PortNumber, portNumber);
    internal::SetStatus("");
    fncCheckForValidPort();
    if (PortOK) {
        SavePortSettings();
        internal::SetStatus("The test on Comm" + NumberText::Plain(std::int32_t{PortNumber}) +
                            " is successful.");
        return;
    }
    BitRate = formerBitRate;
    PortNumber = formerPort;
    if (wasOpen && !internal::PortIsOpen()) {
        // What the test was about; opening the port writes another text.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const std::string result = StatusText();
        ReopenPort(formerPort);
        internal::SetStatus(result);
    }
    PortOK = internal::PortIsOpen();
}

void SetBitRateComboBox() {
    const auto entry =
        std::find_if(offeredBitRates.begin(), offeredBitRates.end(), [](std::string_view text) {
            return NumberText::Leading(text) == double{1} * BitRate;
        });
    if (entry != offeredBitRates.end() && Data().controls.SelectBitRate)
        Data().controls.SelectBitRate(static_cast<int>(entry - offeredBitRates.begin()));
}

void SetPortComboBox() {
    const auto& list = Data().portList;
    const auto entry = std::find_if(list.begin(), list.end(), [](const std::string& text) {
        return text.substr(portPrefix.size()) == NumberText::Plain(std::int32_t{PortNumber});
    });
    if (entry != list.end() && Data().controls.SelectPort)
        Data().controls.SelectPort(static_cast<int>(entry - list.begin()));
}

void ClosePort() {
    SavePortSettings();
    EndReading();
    internal::CancelTransfer();
    if (internal::PortIsOpen())
        internal::Control().SetPortOpen(false);
    internal::TellObservers();
}

void Reset() {
    if (Data().controls.MSComm1)
        Detach();
    Data() = LinkData();
    BitRate = 9600;
    PortNumber = 1;
    PortAvailable.fill(false);
    PortOK = false;
    Readings.fill(0);
    Busy = false;
    TimedOut = false;
    InstrumentAddress = {};
}

} // namespace CommPort
