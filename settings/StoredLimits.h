#pragma once

#include "chem/LimitWatch.h"

#include <string>
#include <vector>

namespace mWinInit {

/// The limits of all channels from the section "Limits" of the settings file. A line that is no
/// pair of limits in a known unit sets none.
ChannelLimits LoadLimits();

/// Returns messages as SaveSettings does.
std::vector<std::string> SaveLimits(const ChannelLimits& limits);

} // namespace mWinInit
