#include "simulator/Faults.h"

#include <array>
#include <iterator>

namespace simulator {

namespace {

constexpr std::size_t extraBytes = 12;
constexpr std::size_t noiseBytes = 5;
constexpr std::size_t pieceLength = 12;

constexpr std::array<FaultName, 10> faultNames = {{
    {"none", FaultKind::none, "answers well again", false},
    {"silence", FaultKind::silence, "no answer", false},
    {"half", FaultKind::half, "the first 24 bytes of a frame", false},
    {"badend", FaultKind::badEnd, "a frame whose last byte is not EOT", false},
    {"garbage", FaultKind::garbage, "48 bytes without sense", false},
    {"noise", FaultKind::noise, "a few stray bytes before a good frame", false},
    {"extra", FaultKind::extra, "a good frame with 12 bytes too many", false},
    {"pieces", FaultKind::pieces, "a good frame in four pieces, SECONDS apart (0.2)", true},
    {"delay", FaultKind::delay, "a good frame, SECONDS late (1)", true},
    {"unplug", FaultKind::unplug, "half a frame, then the cable is pulled", false},
}};

/// Bytes that a disturbed line makes; no EOT among them, so that they end no frame.
std::vector<std::uint8_t> RandomBytes(std::size_t count, std::mt19937_64& random) {
    std::uniform_int_distribution<int> any(0, 255);
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < count) {
        const auto byte = static_cast<std::uint8_t>(any(random));
        if (byte != endOfTransmission)
            bytes.push_back(byte);
    }
    return bytes;
}

std::vector<Piece> Quarters(const std::vector<std::uint8_t>& frame, Seconds pause) {
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at < frame.size(); at += pieceLength) {
        const auto begin = frame.begin() + static_cast<std::ptrdiff_t>(at);
        pieces.push_back({at == 0 ? Seconds(0) : pause,
                          {begin, std::next(begin, static_cast<std::ptrdiff_t>(pieceLength))}});
    }
    return pieces;
}

void Append(std::vector<std::uint8_t>& bytes, const std::vector<std::uint8_t>& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace

std::span<const FaultName> FaultNames() {
    return faultNames;
}

std::string Fault::Text() const {
    std::string text;
    for (const FaultName& each : faultNames) {
        if (each.kind == kind)
            text = each.takesSeconds ? std::string(each.name) + " " + Short(time.count()) + " s"
                                     : std::string(each.name);
    }
    if (kind != FaultKind::none && replies)
        text += ", " + std::to_string(*replies) + (*replies == 1 ? " time" : " times");
    return text;
}

Reply ShapeReply(FaultKind kind, Seconds time, const Frame& frame, std::mt19937_64& random) {
    std::vector<std::uint8_t> bytes(frame.begin(), frame.end());
    switch (kind) {
    case FaultKind::silence:
        return {};
    case FaultKind::half:
    case FaultKind::unplug:
        bytes.resize(frameLength / 2);
        return {{{Seconds(0), bytes}}, kind == FaultKind::unplug};
    case FaultKind::badEnd:
        bytes.back() = tab;
        break;
    case FaultKind::garbage:
        bytes = RandomBytes(frameLength, random);
        break;
    case FaultKind::noise: {
        std::vector<std::uint8_t> noise = RandomBytes(noiseBytes, random);
        Append(noise, bytes);
        return {{{Seconds(0), noise}}};
    }
    case FaultKind::extra:
        Append(bytes, RandomBytes(extraBytes, random));
        break;
    case FaultKind::pieces:
        return {Quarters(bytes, time)};
    case FaultKind::delay:
        return {{{time, bytes}}};
    case FaultKind::none:
        break;
    }
    return {{{Seconds(0), bytes}}};
}

} // namespace simulator
