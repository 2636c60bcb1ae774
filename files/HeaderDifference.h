#pragma once

#include "base/Channels.h"
#include "settings/mWinInit.h"

#include <array>
#include <string>
#include <string_view>

namespace FileOpr {

/// What a header tells, as it was when the header was written.
struct HeaderRecords {
    mWinInit::ProjectInfoRecord project;
    std::array<mWinInit::ChannelSetupRecord, maxChannels> channels;
    std::array<CalibrationRecord, maxChannels> calibration;
};

/// The working records at this moment.
HeaderRecords RecordsInForce();

/// What of the first `channelCount` channels and of the project a header would now tell
/// differently: "project name; channel 2: electrode, calibration". Empty for nothing.
std::string HeaderDifferences(const HeaderRecords& written, const HeaderRecords& now,
                              std::size_t channelCount);

/// The same as a sentence about the file; empty for no differences.
std::string HeaderNotice(std::string_view differences, std::string_view fileName);

} // namespace FileOpr
