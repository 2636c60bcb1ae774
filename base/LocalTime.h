#pragma once

/// A moment of the user's wall clock, in local time.
struct LocalTime {
    int year = 1970;
    int month = 1; ///< 1..12
    int day = 1;   ///< 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};
