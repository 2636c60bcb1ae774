#include "simulator/LineSpeed.h"

#include "base/RunTimeError.h"

#include <array>
#include <charconv>
#include <string>

namespace simulator {

namespace {

struct Speed {
    std::uint32_t bitRate;
    speed_t code;
};

constexpr std::array<Speed, 10> speeds = {{{300, B300},
                                           {600, B600},
                                           {1200, B1200},
                                           {2400, B2400},
                                           {4800, B4800},
                                           {9600, B9600},
                                           {19200, B19200},
                                           {38400, B38400},
                                           {57600, B57600},
                                           {115200, B115200}}};

} // namespace

std::uint32_t ParseBitRateText(std::string_view text) {
    std::uint32_t bitRate = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), bitRate);
    std::string list;
    for (const Speed& each : speeds) {
        if (end.ec == std::errc{} && end.ptr == text.data() + text.size() &&
            each.bitRate == bitRate)
            return bitRate;
        list += (list.empty() ? "" : ", ") + std::to_string(each.bitRate);
    }
    throw RunTimeError("\"" + std::string(text) + "\" is no bit rate; there are " + list);
}

std::optional<std::uint32_t> BitRateOf(speed_t code) {
    for (const Speed& each : speeds) {
        if (each.code == code)
            return each.bitRate;
    }
    return std::nullopt;
}

speed_t SpeedCodeOf(std::uint32_t bitRate) {
    for (const Speed& each : speeds) {
        if (each.bitRate == bitRate)
            return each.code;
    }
    throw RunTimeError(std::to_string(bitRate) + " is no bit rate");
}

} // namespace simulator
