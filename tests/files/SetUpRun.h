#pragma once

#include "files/MeasurementRecord.h"

#include <cstdint>

#include <string>

/// Sets the working records of a believable run: channel 1 pH, 2 Ca, 3 Redox, 4 None, and in
/// eight-channel mode 5 to 8 the same again.
void SetUpRun(int channelCount = 4);

/// Texts as the measuring page shows them for that run; channel 4 is idle.
FileOpr::DisplayedChannels DisplayedRun();

/// A separator line of the file, with its line end.
std::string Separator();
