#pragma once

#include <QtGlobal>

/// How long a window works on a long task at once: keys, mouse and measuring wait no longer.
inline constexpr qint64 sliceTime_ms = 8;
