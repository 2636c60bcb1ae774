#pragma once

#include "simulator/FrameEncoder.h"
#include "simulator/Quantities.h"

#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

enum class FaultKind {
    none,
    silence, ///< no answer
    half,    ///< the first 24 bytes alone
    badEnd,  ///< TAB where EOT belongs
    garbage, ///< 48 bytes of anything but frames
    noise,   ///< a few stray bytes, then a good frame
    extra,   ///< a good frame and 12 bytes more
    pieces,  ///< a good frame in four pieces with pauses between
    delay,   ///< a good frame, late
    unplug,  ///< half a frame, then the cable is pulled
};

struct FaultName {
    std::string_view name;
    FaultKind kind;
    std::string_view meaning;
    bool takesSeconds; ///< `delay` and `pieces` take a time
};

/// Every fault, in the order of the help; a new one is added here and in ShapeReply.
std::span<const FaultName> FaultNames();

struct Fault {
    FaultKind kind = FaultKind::none;
    Seconds time{0};            ///< the delay, or the pause between pieces
    std::optional<int> replies; ///< answers that it spoils; without a number until it is cleared

    /// For example "delay 1.5 s, 3 times".
    std::string Text() const;
};

/// Bytes that go out one behind the other after a pause.
struct Piece {
    Seconds pause{0};
    std::vector<std::uint8_t> bytes;
};

struct Reply {
    std::vector<Piece> pieces;
    bool unplugAfterwards = false;
};

/// The answer that a fault makes of a frame.
Reply ShapeReply(FaultKind kind, Seconds time, const Frame& frame, std::mt19937_64& random);

} // namespace simulator
