#include "link/TransferState.h"

#include <algorithm>
#include <array>

namespace TransferState {
namespace {

using enum State;

struct Move {
    State from;
    Event event;
    State to;
};

/// In every other case the state stays.
constexpr std::array moves = std::to_array<Move>({
    {idle, Event::begin, polling},
    {idle, Event::request, asking},

    {asking, Event::begin, polling},
    {asking, Event::frame, idle},
    {asking, Event::badFrame, messageEnded},
    {asking, Event::fail, idle},
    {asking, Event::cancel, idle},

    {listening, Event::begin, polling},
    {listening, Event::end, idle},
    {listening, Event::request, polling},
    {listening, Event::badFrame, message},
    {listening, Event::fail, failed},

    {polling, Event::end, asking},
    {polling, Event::frame, listening},
    {polling, Event::badFrame, message},
    {polling, Event::fail, failed},
    {polling, Event::cancel, listening},

    {failed, Event::begin, polling},
    {failed, Event::end, idle},

    {lost, Event::begin, polling},
    {lost, Event::end, idle},
    {lost, Event::request, retrying},
    {lost, Event::frame, listening},
    {lost, Event::giveUp, failed},

    {retrying, Event::begin, polling},
    {retrying, Event::end, asking},
    {retrying, Event::frame, listening},
    {retrying, Event::badFrame, lost},
    {retrying, Event::fail, lost},
    {retrying, Event::cancel, lost},
    {retrying, Event::giveUp, failed},

    {message, Event::begin, messageRestart},
    {message, Event::end, messageEnded},
    {message, Event::answered, failed},

    {messageEnded, Event::begin, messageRestart},
    {messageEnded, Event::answered, idle},

    {messageRestart, Event::end, messageEnded},
    {messageRestart, Event::answered, polling},
});

} // namespace

State Next(State state, Event event, AfterFailure afterFailure) {
    const auto* const move = std::find_if(moves.begin(), moves.end(), [&](const Move& candidate) {
        return candidate.from == state && candidate.event == event;
    });
    if (move == moves.end())
        return state;
    const bool losesLink = event == Event::fail || event == Event::badFrame;
    const bool reads = IsPolling(state);
    // A screen that goes on after a failure shows no box and keeps asking.
    return losesLink && reads && afterFailure == AfterFailure::goOn ? lost : move->to;
}

bool IsAwaiting(State state) {
    return state == State::asking || state == State::polling || state == State::retrying;
}

bool IsPolling(State state) {
    return state == State::listening || state == State::polling || state == State::lost ||
           state == State::retrying;
}

bool IsReading(State state) {
    return IsPolling(state) || state == State::failed;
}

bool IsMessageOpen(State state) {
    return state == State::message || state == State::messageEnded ||
           state == State::messageRestart;
}

} // namespace TransferState
