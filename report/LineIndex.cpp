#include "report/LineIndex.h"

#include <algorithm>

namespace Mreport {

namespace {
constexpr std::size_t slack = 64; // entries; fewer are not worth moving the others
} // namespace

void LineIndex::OpenBlock(std::uint32_t start, std::uint32_t length) {
    blocks_.push_back({count_, start, length, 0, offsets_.size()});
}

void LineIndex::AddOffset(std::size_t offset) {
    offsets_.push_back(static_cast<std::uint32_t>(offset));
    ++blocks_.back().lines;
    ++count_;
}

void LineIndex::Add(std::uint32_t start) {
    if (blocks_.empty() || blocks_.back().length != 0)
        OpenBlock(start, 0);
    AddOffset(start - blocks_.back().start);
}

/// True when the record's lines are as long as those of the record before it.
bool LineIndex::Repeats(const Block& block, const RecordText& record) const {
    if (block.length != record.length)
        return false;
    const std::uint32_t* offsets = &offsets_[block.offsets];
    return offsets[1] == record.firstLength &&
           offsets[2] == record.firstLength + record.commentLength;
}

void LineIndex::AddRecord(std::uint32_t start, const RecordText& record,
                          const RecordLayout& layout) {
    if (!blocks_.empty()) {
        const Block& block = blocks_.back();
        if (Repeats(block, record)) {
            count_ += block.lines;
            return;
        }
    }
    OpenBlock(start, static_cast<std::uint32_t>(record.length));
    AddOffset(0);
    AddOffset(record.firstLength);
    std::size_t offset = record.firstLength + record.commentLength;
    for (const RecordLayout::Row& row : layout.Rows()) {
        AddOffset(offset);
        offset += row.length;
    }
    AddOffset(offset); // of the separator
}

void LineIndex::RemoveLast() {
    --count_;
    offsets_.pop_back();
    if (--blocks_.back().lines == 0)
        blocks_.pop_back();
}

void LineIndex::Finish() {
    if (offsets_.capacity() - offsets_.size() > slack)
        offsets_.shrink_to_fit();
    if (blocks_.capacity() - blocks_.size() > slack)
        blocks_.shrink_to_fit();
}

std::uint32_t LineIndex::Start(Line line) const {
    const Block& block = *std::prev(std::ranges::upper_bound(blocks_, line, {}, &Block::firstLine));
    const Line within = line - block.firstLine;
    if (block.length == 0)
        return block.start + offsets_[block.offsets + within];
    return block.start + static_cast<std::uint32_t>(within / block.lines) * block.length +
           offsets_[block.offsets + within % block.lines];
}

LineIndex::Line LineIndex::LineAt(std::uint64_t place) const {
    const auto behind = std::ranges::upper_bound(blocks_, place, {}, &Block::start);
    const Block& block = *std::prev(behind);
    const Line end = behind == blocks_.end() ? count_ : behind->firstLine;
    std::uint64_t within = place - block.start;
    Line first = block.firstLine;
    if (block.length != 0) {
        const Line lastRecord = (end - first) / block.lines - 1;
        const Line record = std::min<std::uint64_t>(within / block.length, lastRecord);
        within -= record * block.length;
        first += record * block.lines;
    }
    const auto offsets = std::next(offsets_.begin(), static_cast<std::ptrdiff_t>(block.offsets));
    const auto last = std::next(offsets, static_cast<std::ptrdiff_t>(block.lines));
    const auto next = std::upper_bound(offsets, last, within);
    return first + static_cast<Line>(next - offsets) - 1;
}

std::size_t LineIndex::Bytes() const {
    return blocks_.capacity() * sizeof(Block) + offsets_.capacity() * sizeof(std::uint32_t);
}

} // namespace Mreport
