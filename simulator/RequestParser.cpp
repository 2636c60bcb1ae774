#include "simulator/RequestParser.h"

namespace simulator {

namespace {

constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t startOfText = 0x02;
constexpr std::uint8_t cancel = 0x18;

} // namespace

std::optional<Request> RequestParser::Feed(std::uint8_t byte) {
    switch (state_) {
    case State::idle:
        return FeedIdle(byte);
    case State::firstAddress:
        state_ = State::secondAddress;
        return std::nullopt;
    case State::secondAddress:
        state_ = State::selectEnd;
        return std::nullopt;
    case State::selectEnd:
        break;
    }
    state_ = State::idle;
    if (byte != startOfText)
        return FeedIdle(byte); // a broken select: the byte begins something new
    return Request::select;
}

std::optional<Request> RequestParser::FeedIdle(std::uint8_t byte) {
    switch (byte) {
    case startOfHeading:
        state_ = State::firstAddress;
        return std::nullopt;
    case startOfText:
        return Request::frame;
    case cancel:
        return Request::cancel;
    default:
        return std::nullopt;
    }
}

} // namespace simulator
