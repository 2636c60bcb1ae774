#pragma once

#include "chem/CheckStandard.h"

#include <string>
#include <vector>

namespace mWinInit {

/// The bounds of a check from a section of their own of the settings file; what it does not hold,
/// or holds wrongly, is as at first.
CheckStandard::Bounds LoadCheckBounds();

/// Returns messages as SaveSettings does.
std::vector<std::string> SaveCheckBounds(const CheckStandard::Bounds& bounds);

} // namespace mWinInit
