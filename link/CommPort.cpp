#include "link/CommPort.h"

#include "link/Link.h"

#include <utility>

namespace CommPort {
namespace {

std::unique_ptr<Link>& Owner() {
    static auto owner = std::make_unique<Link>();
    return owner;
}

} // namespace

Link& TheLink() {
    return *Owner();
}

std::int32_t BitRate() {
    return TheLink().choice.BitRate;
}

std::int16_t PortNumber() {
    return TheLink().choice.PortNumber;
}

bool PortAvailable(int number) {
    return TheLink().port.IsAvailable(number);
}

bool PortOK() {
    return TheLink().port.PortOK;
}

void Attach(Controls controls) {
    TheLink().Attach(std::move(controls));
}

void Detach() {
    TheLink().Detach();
}

void LoadPortSettings() {
    TheLink().choice = LoadPortChoice();
}

void SavePortSettings() {
    SavePortChoice(TheLink().choice);
}

void OpenPort(std::int32_t bitRate, std::int16_t portNumber) {
    TheLink().OpenPort({bitRate, portNumber});
}

void SetPortTimeouts() {
    TheLink().port.SetTimeouts(BitRate());
}

void ScanPorts() {
    TheLink().Scan();
}

const std::string& PortProblem(int number) {
    return TheLink().port.Problem(number);
}

void fncInitializeComPort() {
    TheLink().Initialize();
}

void fncCheckForValidPort() {
    TheLink().CheckForValidPort();
}

void TestPort(std::int32_t bitRate, std::int16_t portNumber) {
    TheLink().Test({bitRate, portNumber});
}

bool UseSimulated(std::int16_t portNumber) {
    return TheLink().UseSimulated(portNumber);
}

void SimulatedEnded() {
    TheLink().SimulatedEnded();
}

void FindInstrument() {
    TheLink().FindInstrument();
}

void StopSearch() {
    TheLink().StopSearch();
}

void SetBitRateComboBox() {
    TheLink().SelectBitRate();
}

void SetPortComboBox() {
    TheLink().SelectPort();
}

void ShowPresentStatus() {
    TheLink().ShowPresent();
}

void ClosePort() {
    TheLink().Close();
}

CycleValues& Readings() {
    return TheLink().transfer.Readings;
}

bool Busy() {
    return TheLink().transfer.Busy();
}

bool TimedOut() {
    return TheLink().transfer.TimedOut;
}

void SendCommand(std::string_view command) {
    TheLink().transfer.SendCommand(command);
}

void TransferOnce() {
    TheLink().TransferOnce();
}

void ReceiveFrame() {
    TheLink().transfer.ReceiveFrame();
}

void DecodeFrame() {
    TheLink().transfer.DecodeFrame();
}

void ApplyTransferInterval() {
    TheLink().transfer.ApplyTransferInterval();
}

void tmrTimeout_Timer() {
    TheLink().transfer.tmrTimeout_Timer();
}

void tmrTransferInterval_Timer() {
    TheLink().transfer.tmrTransferInterval_Timer();
}

void tmrProbe_Timer() {
    TheLink().probe.OnTimer();
}

void MSComm1_OnComm(platform::SerialControl::Event event) {
    TheLink().transfer.MSComm1_OnComm(event);
}

void MSComm1_OnArrival() {
    TheLink().transfer.MSComm1_OnArrival();
}

LinkState State() {
    return TheLink().transfer.Outcome();
}

bool HasFailed() {
    return TheLink().transfer.HasFailed();
}

bool IsLost() {
    return TheLink().transfer.IsLost();
}

std::optional<LocalTime> LastReading() {
    return TheLink().transfer.LastReading();
}

unsigned Losses() {
    return TheLink().transfer.Losses();
}

std::optional<LocalTime> LastReadingBeforeLoss() {
    return TheLink().transfer.LastReadingBeforeLoss();
}

const std::string& StatusText() {
    return TheLink().status.Text();
}

std::string LinkText() {
    return TheLink().Text();
}

std::shared_ptr<void> ObserveLink(std::function<void()> changed) {
    return TheLink().status.Observe(std::move(changed));
}

void BeginReading() {
    TheLink().BeginReading();
}

void EndReading() {
    TheLink().transfer.EndReading();
}

void GoOnAfterFailure(bool goOn) {
    TheLink().transfer.SetAfterFailure(goOn ? Transfer::AfterFailure::goOn
                                            : Transfer::AfterFailure::stop);
}

void Reset() {
    if (TheLink().port.IsAttached())
        Detach();
    Owner() = std::make_unique<Link>();
}

} // namespace CommPort
