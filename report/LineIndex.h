#pragma once

#include "report/RecordLayout.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Mreport {

/// Where each line of a list page begins, in bytes from the page's first byte on. Records that
/// follow one another and have equally long lines take the room of one; any other line takes 4
/// bytes.
class LineIndex {
public:
    using Line = std::size_t;

    /// A line that begins behind all others.
    void Add(std::uint32_t start);

    /// A record that begins behind all other lines. One that follows a record, without a line
    /// between them, must have that one's layout.
    void AddRecord(std::uint32_t start, const RecordText& record, const RecordLayout& layout);

    /// Takes the last line back, which must have been added alone.
    void RemoveLast();

    /// Gives back the memory that further lines would have taken.
    void Finish();

    Line Count() const { return count_; }
    std::uint32_t Start(Line line) const;

    /// The line that begins at or before this place, which must not lie before the first one.
    Line LineAt(std::uint64_t place) const;

    std::size_t Bytes() const;

private:
    /// Lines whose starts repeat with every record.
    struct Block {
        Line firstLine = 0;
        std::uint32_t start = 0;
        std::uint32_t length = 0; ///< of a record in bytes; 0 for lines that are no record
        std::size_t lines = 0;    ///< of a record, or all
        std::size_t offsets = 0;  ///< at which those of its lines stand in offsets_
    };

    bool Repeats(const Block& block, const RecordText& record) const;
    void OpenBlock(std::uint32_t start, std::uint32_t length);
    void AddOffset(std::size_t offset);

    std::vector<Block> blocks_;
    std::vector<std::uint32_t> offsets_; ///< of lines, from the start of their block's record
    Line count_ = 0;
};

} // namespace Mreport
