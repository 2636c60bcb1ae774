#pragma once

#include "history/Entry.h"

#include <array>
#include <cstdint>
#include <string>

namespace History {

/// An entry as the file holds it: texts of UTF-8, chained to the row before. Its sum covers its
/// number, the sum before and every field, so that no row can be changed, left out, added or moved
/// without breaking the chain behind it.
struct Row {
    /// Places of the fields, in the order of the file's columns.
    enum Field : std::size_t {
        at,
        kind,
        analyst,
        user,
        channel,
        electrode,
        serialNo,
        file,
        text,
        data,
        fieldCount
    };
    using Fields = std::array<std::string, fieldCount>;

    std::int64_t number = 0;
    Fields fields;
    std::string before; ///< the sum of the row before
    std::string sum;
};

/// What stands before the first row.
inline const std::string noSum(64, '0');

/// SHA-256 in digits 0-9 a-f.
std::string SumOf(const Row& row);

Row::Fields FieldsOf(const Entry& entry);

/// A text that is no longer legible is shown as far as it is.
NumberedEntry EntryOf(const Row& row);

} // namespace History
