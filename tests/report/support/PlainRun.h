#pragma once

#include "report/RunOverview.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A record as the plain reader finds it.
struct PlainRecord {
    std::string firstLine;
    std::string comment;
    std::vector<std::vector<std::string>> rows; ///< label without trailing blanks, then the cells
    std::size_t offset = 0;
    std::size_t end = 0; ///< behind its last line

    /// The value in a column (from 0) of the last row with this label; nothing without one.
    std::optional<double> Value(std::string_view label, std::size_t column) const;
};

/// Reads all records of the bytes line by line and looks at every value, in the simplest way.
std::vector<PlainRecord> ReadPlainly(const std::string& bytes);

/// Cuts the run into pieces of so many records, the last one shorter.
std::vector<Mreport::RunPiece> PiecesOf(const std::vector<PlainRecord>& records,
                                        std::size_t recordsPerPiece);
