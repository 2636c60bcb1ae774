#include "link/FrameStream.h"

#include <algorithm>
#include <utility>

namespace {

constexpr auto frameLength = static_cast<std::ptrdiff_t>(Frame::length);

} // namespace

void FrameStream::Feed(std::span<const std::uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    fed_ += bytes.size();
}

void FrameStream::Restart() {
    bytes_.clear();
    outOfStep_ = gapFollows_ = false;
    fed_ = 0;
}

void FrameStream::LoseStep() {
    Restart();
    outOfStep_ = true;
}

FrameStream::Event FrameStream::Next() {
    if (outOfStep_)
        DropThroughEot();
    while (bytes_.size() >= Frame::length) {
        std::copy_n(bytes_.begin(), frameLength, frame_.begin());
        if (Frame::IsComplete(frame_)) {
            bytes_.erase(bytes_.begin(), bytes_.begin() + frameLength);
            return Event::frame;
        }
        if (!DropTail()) {
            outOfStep_ = true; // the next frame may have begun within the bad one
            return Event::badFrame;
        }
    }
    if (std::exchange(gapFollows_, false))
        bytes_.clear();
    return Event::nothing;
}

void FrameStream::DropThroughEot() {
    const auto eot = std::find(bytes_.begin(), bytes_.end(), Frame::endOfTransmission);
    outOfStep_ = eot == bytes_.end();
    bytes_.erase(bytes_.begin(), outOfStep_ ? eot : eot + 1);
}

/// Drops the tail that the next 48 bytes begin with; false where they begin with none.
bool FrameStream::DropTail() {
    const auto end = std::find(frame_.begin(), frame_.end(), Frame::endOfTransmission);
    if (end == frame_.end())
        return false;
    const auto length = end - frame_.begin() + 1;
    if (!Frame::IsTail({frame_.begin(), end + 1}))
        return false;
    bytes_.erase(bytes_.begin(), bytes_.begin() + length);
    return true;
}
