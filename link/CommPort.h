#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <cstdint>

/// The serial port: choice, memory, opening and test, and the exchange of frames over it.
namespace CommPort {

/// Values of the latest frame: slots 0..7 in frame order (E1, T1, ... E4, T4), 8..11 stay 0.
extern std::array<float, cyclePositions> Readings;

/// What the link has done since reading began.
enum class LinkState { waiting, answered, failed };
LinkState State();

/// A screen starts to read: clears the state, reopens a port that has gone, sends the first
/// request at once and polls from then on.
void BeginReading();

/// No screen reads any more; a transfer under way is left to end.
void EndReading();

/// Saves the settings and closes the port, on program exit.
void ClosePort();

/// Back to the state at program start.
void Reset();

} // namespace CommPort
