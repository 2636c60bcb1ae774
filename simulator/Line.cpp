#include "simulator/Line.h"

#include <algorithm>

namespace simulator {

void Line::SetBitRate(std::uint32_t bitsPerSecond) {
    if (bitsPerSecond > 0)
        bitRate_ = bitsPerSecond;
}

void Line::Send(std::span<const std::uint8_t> bytes, Seconds pause, Seconds now) {
    const Seconds byteTime = fast_ ? Seconds(0) : Seconds(double{bitsPerByte} / bitRate_);
    Seconds due = End(now) + pause;
    for (std::uint8_t byte : bytes) {
        due += byteTime;
        items_.push_back({due, byte, false});
    }
}

void Line::UnplugBehind(Seconds now) {
    items_.push_back({End(now), 0, true});
}

Line::Due Line::TakeDue(Seconds now) {
    Due due;
    while (!items_.empty() && items_.front().due <= now) {
        if (items_.front().unplug) {
            due.unplug = true;
            items_.clear();
            break;
        }
        due.bytes.push_back(items_.front().byte);
        items_.pop_front();
    }
    return due;
}

std::optional<Seconds> Line::NextDue() const {
    if (items_.empty())
        return std::nullopt;
    return items_.front().due;
}

Seconds Line::End(Seconds now) const {
    return items_.empty() ? now : std::max(now, items_.back().due);
}

} // namespace simulator
