#pragma once

#include "settings/mWinInit.h"

/// The working records of a channel (0-based), as the calibration screens use them. Both throw
/// std::out_of_range where there is no such channel.
inline const mWinInit::ChannelSetupRecord& SetupOf(int channel) {
    return mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel));
}

inline CalibrationRecord& StoredOf(int channel) {
    return mWinInit::Calibration.at(static_cast<std::size_t>(channel));
}
