#pragma once

#include "link/Frame.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The bytes of the line taken apart into frames: bytes in, events out. It knows neither port nor
/// clock; how the bytes are cut into pieces makes no difference.
///
/// Every 48 bytes are a frame when the last of them is EOT. Where it is not, they may begin with
/// the tail of a frame whose start was lost, cut off when the input was emptied: counted back from
/// the first EOT, each byte then stands in its place. Such a tail is dropped without a word.
/// Anything else is a bad frame, behind which the stream is taken up again after the next EOT.
class FrameStream {
public:
    enum class Event { nothing, frame, badFrame };

    void Feed(std::span<const std::uint8_t> bytes);

    /// The next event of the bytes fed so far; `nothing` when it needs more of them.
    Event Next();

    /// The 48 bytes that Next told of last as a frame.
    const Frame::Bytes& LastFrame() const { return frame_; }

    /// Forgets all bytes; the next one may stand anywhere in a frame.
    void Restart();

    /// Bytes were lost behind those fed so far: what is no whole frame of these is dropped, and the
    /// next byte may stand anywhere in a frame.
    void NoteGap() { gapFollows_ = true; }

    /// Forgets all bytes; those up to the next EOT belong to a frame whose start was lost.
    void LoseStep();

    /// Bytes fed since the restart, those that were dropped included.
    std::size_t BytesSinceRestart() const { return fed_; }

    /// The stream is within a frame, or seeks its next beginning.
    bool IsUnderWay() const { return !bytes_.empty() || outOfStep_; }

private:
    void DropThroughEot();
    bool DropTail();

    std::vector<std::uint8_t> bytes_;
    bool outOfStep_ = false;
    bool gapFollows_ = false;
    std::size_t fed_ = 0;
    Frame::Bytes frame_{};
};
