#pragma once

#include "chem/CalibrationRecord.h"

#include <string>

class QPushButton;

/// Shows the help text of the calibration screens.
void ShowCalibrationHelp();

/// Shows the one button or the other. The one goes before the other comes: both together may be
/// wider than a small screen.
void OfferFinish(bool finish, QPushButton& finishButton, QPushButton& closeButton);

/// Asks for a new averaging number of the calibration; true where one was given.
bool AskAveragingForCalibration();

/// Stores a finished calibration of a channel (0-based) in the working records, the history and the
/// settings file; says what will not come back from there. The temperature is that of its last
/// reading, as displayed.
void StoreCalibration(std::size_t channel, CalibrationRecord record, const std::string& date,
                      const std::string& temperature_celsius);
