#pragma once

#include <cstdint>
#include <optional>

namespace simulator {

/// What the program asks the instrument for.
enum class Request { frame, select, cancel };

/// The bytes of the program's commands, one by one: STX asks for a frame, SOH with two address
/// bytes and STX selects, CAN cancels. Anything else is passed over.
class RequestParser {
public:
    /// The request that this byte completes.
    std::optional<Request> Feed(std::uint8_t byte);

    /// Forgets a select that has begun.
    void Reset() { state_ = State::idle; }

private:
    enum class State { idle, firstAddress, secondAddress, selectEnd };

    std::optional<Request> FeedIdle(std::uint8_t byte);

    State state_ = State::idle;
};

} // namespace simulator
