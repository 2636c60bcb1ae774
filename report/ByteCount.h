#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Mreport {

/// How often a letter stands in a text. Counted in lanes, which the compiler takes at once: every
/// byte of a long file goes through here.
inline std::size_t CountOf(char letter, std::string_view text) {
    constexpr std::size_t lanes = 32;
    constexpr std::size_t mostRounds = 255; // that a lane can count
    std::size_t count = 0;
    while (text.size() >= lanes) {
        std::array<std::uint8_t, lanes> found{};
        const std::size_t rounds = std::min(text.size() / lanes, mostRounds);
        const char* round = text.data();
        for (std::size_t i = 0; i < rounds; ++i, round += lanes)
            for (std::size_t lane = 0; lane < lanes; ++lane)
                found[lane] = static_cast<std::uint8_t>(found[lane] + (round[lane] == letter));
        std::uint16_t sum = 0; // of the lanes, which it holds; narrow, it is taken at once, too
        for (const std::uint8_t lane : found)
            sum = static_cast<std::uint16_t>(sum + lane);
        count += sum;
        text.remove_prefix(rounds * lanes);
    }
    for (const char c : text)
        count += c == letter ? 1 : 0;
    return count;
}

} // namespace Mreport
