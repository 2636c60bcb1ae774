#pragma once

#include "settings/mWinInit.h"

/// The working records of a channel (0-based), as the calibration screens use them. Both throw
/// std::out_of_range where there is no such channel.
inline const mWinInit::ChannelSetupRecord& SetupOf(std::size_t channel) {
    return mWinInit::ChannelSetup.at(channel);
}

inline CalibrationRecord& StoredOf(std::size_t channel) {
    return mWinInit::Calibration.at(channel);
}
