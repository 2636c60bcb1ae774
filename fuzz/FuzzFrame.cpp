#include "NullPlatform.h"

#include "link/Frame.h"

#include <cmath>

/// The input is a frame, repeated or cut to its length, and a hexadecimal text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Require(!Frame::DecodeHexPair(fuzz::Text(data, size)).empty());
    Frame::Bytes frame{};
    for (std::size_t i = 0; i < frame.size() && size > 0; ++i)
        frame[i] = data[i % size];
    fuzz::Require(Frame::IsComplete(frame) == (frame.back() == 4));
    // Five digits with the sign's place, the last of them tenths.
    constexpr float largest = 9999.9F;
    for (const float value : Frame::Decode(frame))
        fuzz::Require(std::isfinite(value) && std::abs(value) <= largest);
    return 0;
}
