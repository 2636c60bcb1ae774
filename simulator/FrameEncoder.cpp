#include "simulator/FrameEncoder.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr std::size_t valueLength = 6;
constexpr double mostTenths = 9999;

} // namespace

Frame EncodeFrame(const Values& values) {
    Frame frame{};
    for (std::size_t k = 0; k < frameValues; ++k) {
        const double rounded = std::round(values[k] * 10.0);
        int tenths = static_cast<int>(std::clamp(rounded, -mostTenths, mostTenths));
        const std::size_t at = valueLength * k;
        frame[at] = tenths < 0 ? '-' : '+';
        tenths = std::abs(tenths);
        for (std::size_t digit = 4; digit >= 1; --digit) {
            frame[at + digit] = static_cast<std::uint8_t>('0' + tenths % 10);
            tenths /= 10;
        }
        frame[at + 5] = k + 1 < frameValues ? tab : endOfTransmission;
    }
    return frame;
}

} // namespace simulator
