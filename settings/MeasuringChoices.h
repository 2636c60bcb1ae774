#pragma once

#include "base/Quantity.h"

#include <cstddef>
#include <string>
#include <vector>

namespace mWinInit {

/// What the measuring page remembers from one run of the program to the next, in sections of its
/// own of the settings file.
struct MeasuringChoices {
    bool automatic = false;  ///< the mode list's "Automatic"
    std::string period;      ///< as typed; empty: as the form is designed
    bool whenSteady = false; ///< a record waits until the readings are steady
    bool resume = false;     ///< a run goes on when the instrument answers again
    bool trendShown = true;
    int trendMinutes = 10; ///< one of trendSpans
    Quantity trendQuantity = Quantity::mV;
    std::vector<std::string> comments; ///< of records, the last one first

    bool operator==(const MeasuringChoices&) const = default;
};

inline constexpr int trendSpans[] = {1, 10, 60}; ///< minutes
inline constexpr std::size_t rememberedComments = 20;

/// What the file does not hold, or holds wrongly, is as in a new MeasuringChoices.
MeasuringChoices LoadMeasuringChoices();

/// Returns messages as SaveSettings does.
std::vector<std::string> SaveMeasuringChoices(const MeasuringChoices& choices);

/// Puts a record's comment in front of the remembered ones. A blank one, and one that is longer
/// than the settings file gives back, is left out.
void RememberComment(MeasuringChoices& choices, const std::string& comment);

} // namespace mWinInit
