#pragma once

namespace platform {

/// The user has asked his desktop for less motion.
bool UserWantsLessMotion();

} // namespace platform
