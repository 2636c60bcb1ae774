#pragma once

#include "base/LocalTime.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace History {

/// What an entry tells of.
enum class Kind {
    begun,          ///< the history itself begins
    calibration,    ///< a calibration was stored
    setting,        ///< a setting or a channel was changed
    recordingBegun, ///< records go into a file from now on
    recordingEnded,
    linkFailed,
    linkAnswers, ///< again, after a failure
    flushed,     ///< records have reached their file
    recovered,   ///< records of an interrupted recording have reached their file
    writeFailed,
    checked, ///< a reading was held against a standard
};

inline constexpr std::array allKinds = {
    Kind::begun,          Kind::calibration, Kind::setting,     Kind::recordingBegun,
    Kind::recordingEnded, Kind::linkFailed,  Kind::linkAnswers, Kind::flushed,
    Kind::recovered,      Kind::writeFailed, Kind::checked};

/// As the screens name it, "Calibration". The file has the same name.
std::string_view NameOf(Kind kind);
std::optional<Kind> KindNamed(std::string_view name);

/// One thing that has happened. Texts are Windows-1252; what does not apply is empty.
struct Entry {
    LocalTime at;
    Kind kind = Kind::begun;
    std::string analyst;        ///< named on the setup page
    std::string user;           ///< of the system
    std::optional<int> channel; ///< 0-based
    std::string electrode;
    std::string serialNo;
    std::string file; ///< the measurement file's whole path
    std::string text; ///< what happened, for a reader
    std::string data; ///< the same as facts, for the program
};

/// An entry with its number, from 1 in the order of writing.
struct NumberedEntry {
    std::int64_t number = 0;
    Entry entry;
};

/// The names and values of an entry's data. A value has no line end.
using Facts = std::vector<std::pair<std::string_view, std::string>>;
std::string DataOf(const Facts& facts);

/// The value of a fact; nothing where the data lacks it.
std::optional<std::string> FactOf(std::string_view data, std::string_view name);

/// "2026-11-21 14:30:07", which sorts as the moments do.
std::string SortableTime(const LocalTime& time);

/// Nothing for a text that is none.
std::optional<LocalTime> TimeOf(std::string_view sortable);

} // namespace History
