#pragma once

#include "chem/CalibrationRecord.h"
#include "link/Frame.h"
#include "platform/SerialControl.h"
#include "platform/Timer.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The serial port: choice, memory, opening and test, and the exchange of frames over it. One
/// state machine driven by events: a call starts a transfer and returns, arrivals and timers carry
/// it on, and no call waits for the instrument.
namespace CommPort {

// ---- The port ------------------------------------------------------------------------------

inline constexpr std::int16_t maxPortNumber = 16;
inline constexpr std::array<std::string_view, 8> offeredBitRates = {
    "300", "1200", "2400", "4800", "9600", "19200", "57600", "115200"};

extern std::int32_t BitRate;    ///< bit/s
extern std::int16_t PortNumber; ///< COM1..COM16
/// What the last scan found, indices 1..16.
extern std::array<bool, maxPortNumber + 1> PortAvailable;
extern bool PortOK; ///< the port was opened successfully

/// The controls of the port screen, as far as the link uses them. The serial control and the
/// timers must outlive the attachment; a function that is left empty is not called.
struct Controls {
    platform::SerialControl* MSComm1 = nullptr;
    platform::Timer* tmrTimeout = nullptr;
    platform::Timer* tmrTransferInterval = nullptr;
    std::function<void(const std::string&)> SetStatusText;            ///< txtStatus
    std::function<void(const std::vector<std::string>&)> SetPortList; ///< entries of cboPort
    std::function<void(int)> SelectPort;                              ///< entry of cboPort
    std::function<void(int)> SelectBitRate;                           ///< entry of cboBitRate
    std::function<std::int16_t()> IntervalValue;                      ///< 1 where empty
    std::function<std::string()> IntervalUnit;                        ///< "seconds" where empty
};

/// Takes the controls into use and connects the serial control's events. The timers' ticks must
/// be brought to tmrTimeout_Timer and tmrTransferInterval_Timer.
void Attach(Controls controls);

/// The controls go away: closes the port and forgets them.
void Detach();

/// The choice in the per-user store; 9600 bit/s on COM1 where it holds none.
void LoadPortSettings();
void SavePortSettings();

/// Opens the port, closing it first where it was open, and ends a transfer under way. Throws
/// RunTimeError with the reason when it cannot be opened.
void OpenPort(std::int32_t bitRate, std::int16_t portNumber);

/// The driver's time-outs for a bit rate above 0: per byte 10000 / bit rate ms (nearest, ties to
/// even), beside it 1000 ms.
platform::CommTimeouts TimeoutsFor(std::int32_t bitRate);

/// Sets the time-outs of the open port; without one it does nothing.
void SetPortTimeouts();

/// Tries COM1..COM16, fills PortAvailable and the port list, and restores the port in use.
void ScanPorts();

/// Why the last scan could not open a port, 1..16; empty where it could.
const std::string& PortProblem(std::int16_t number);

/// Start-up: an empty reading table, the stored choice, the port opened where possible (PortOK).
void fncInitializeComPort();

/// Opens the chosen port when the last scan found it, else says in txtStatus why not.
void fncCheckForValidPort();

/// Takes a choice into use: tests it, keeps it when the test succeeds and says so in txtStatus;
/// otherwise the former choice and its port stay.
void TestPort(std::int32_t bitRate, std::int16_t portNumber);

/// Select the values in force in the two lists; a value without entry leaves the selection.
void SetBitRateComboBox();
void SetPortComboBox();

// ---- The transfer --------------------------------------------------------------------------

inline constexpr std::chrono::milliseconds transferTimeout{3000};

/// Values of the latest frame: slots 0..7 in frame order (E1, T1, ... E4, T4), 8..11 stay 0.
extern std::array<float, cyclePositions> Readings;

extern bool Busy;     ///< a polled transfer is under way; unsolicited frames are ignored
extern bool TimedOut; ///< the wait for a frame has expired

/// The two address bytes of the select command.
extern std::array<std::uint8_t, 2> InstrumentAddress;

/// Writes a command in one write: "2" requests a frame, "24" cancels, "1" + the decimal texts of
/// the two address bytes + "2" selects the instrument. Any other text writes the previous command
/// again. Throws RunTimeError when the port has gone.
void SendCommand(std::string_view command);

/// Starts one polled transfer: empties the input buffer, requests a frame and waits for it by
/// events. A port that is closed or has gone fails the link.
void TransferOnce();

/// Starts the wait for a frame; one that is there already is taken at once.
void ReceiveFrame();

/// Turns the frame received last into Readings 0..7.
void DecodeFrame();

/// Time between requests; the units are "seconds", "Minutes" and "Hour(s)", any other text counts
/// as seconds, a value below 1 as 1.
std::chrono::milliseconds TransferInterval(std::int16_t value, std::string_view unit);

/// The interval controls were changed: polling goes on with the new interval.
void ApplyTransferInterval();

void tmrTimeout_Timer();
void tmrTransferInterval_Timer();
void MSComm1_OnComm(platform::SerialControl::Event event);

/// Bytes have arrived, whatever their number.
void MSComm1_OnArrival();

// ---- What screens see ----------------------------------------------------------------------

/// What the link has done since reading began. While the message about a bad frame is open the
/// state is `waiting`, so that no screen puts its own message on top of it; then it is `failed`.
enum class LinkState { waiting, answered, failed };
LinkState State();

/// Whether the link has failed since reading began, even if a good frame has come since; false
/// while the message about a bad frame is open. A screen then stops reading and says so.
bool HasFailed();

/// The text that stands in txtStatus.
const std::string& StatusText();

/// Port and state for a status line, for example "COM5, 9600 bit/s: the instrument answers".
std::string LinkText();

/// Calls `changed` whenever the state, the port or txtStatus has changed, as long as the returned
/// handle lives.
[[nodiscard]] std::shared_ptr<void> ObserveLink(std::function<void()> changed);

/// A screen starts to read: clears the state, reopens a port that has gone, sends the first
/// request at once and polls from then on.
void BeginReading();

/// No screen reads any more; a transfer under way is left to end.
void EndReading();

/// Saves the settings and closes the port, on program exit.
void ClosePort();

/// Back to the state at program start, without controls.
void Reset();

} // namespace CommPort
