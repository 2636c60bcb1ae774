#pragma once

#include "link/Controls.h"
#include "link/PortChoice.h"
#include "link/Transfer.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class Link;

/// The face of the program's one link to the instrument, under the system's given names. What they
/// do stands with the classes behind it: Link (port), Transfer (frames).
namespace CommPort {

/// The link itself, for what has no given name.
Link& TheLink();

// ---- The port --------------------------------------------------------------------------------

std::int32_t BitRate();    ///< bit/s
std::int16_t PortNumber(); ///< COM1..COM16
bool PortAvailable(int number);
bool PortOK();

/// Takes the controls into use. The timers' ticks must be brought to tmrTimeout_Timer and
/// tmrTransferInterval_Timer.
void Attach(Controls controls);
void Detach();

void LoadPortSettings();
void SavePortSettings();
void OpenPort(std::int32_t bitRate, std::int16_t portNumber);
void SetPortTimeouts();
void ScanPorts();
const std::string& PortProblem(int number);
void fncInitializeComPort();
void fncCheckForValidPort();
void TestPort(std::int32_t bitRate, std::int16_t portNumber);
bool UseSimulated(std::int16_t portNumber);
void SimulatedEnded();
void FindInstrument();
void StopSearch();
void SetBitRateComboBox();
void SetPortComboBox();

/// Makes txtStatus and LinkText tell the present instead of what an earlier test or reading met.
void ShowPresentStatus();

/// Saves the settings and closes the port, on program exit.
void ClosePort();

// ---- The transfer ----------------------------------------------------------------------------

CycleValues& Readings();
bool Busy();
bool TimedOut();

void SendCommand(std::string_view command);
void TransferOnce();
void ReceiveFrame();
void DecodeFrame();
void ApplyTransferInterval();
void tmrTimeout_Timer();
void tmrTransferInterval_Timer();
void tmrProbe_Timer();
void MSComm1_OnComm(platform::SerialControl::Event event);

/// Bytes have arrived, whatever their number.
void MSComm1_OnArrival();

// ---- What screens see ------------------------------------------------------------------------

LinkState State();

/// A screen then stops reading and says so.
bool HasFailed();

/// The link has failed, and asks on (GoOnAfterFailure) until the instrument answers again.
bool IsLost();

/// When the last good frame came; nothing before the first.
std::optional<LocalTime> LastReading();

/// How often the link was lost while a screen went on, and when the last good frame before the last
/// loss came; nothing where none had come since reading began.
unsigned Losses();
std::optional<LocalTime> LastReadingBeforeLoss();

const std::string& StatusText();
std::string LinkText();

/// Calls `changed` whenever the state, the port or txtStatus has changed, as long as the returned
/// handle lives.
[[nodiscard]] std::shared_ptr<void> ObserveLink(std::function<void()> changed);

void BeginReading();
void EndReading();

/// Whether a failure ends the reading (as it does unless chosen), or the link asks on until the
/// instrument answers again; then a bad frame shows no box either.
void GoOnAfterFailure(bool goOn);

/// Back to the state at program start, without controls.
void Reset();

} // namespace CommPort
