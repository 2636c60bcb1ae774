#pragma once

/// The states of the exchange with the instrument and the moves between them, drawn in
/// docs/ARCHITECTURE.md.
namespace TransferState {

enum class State {
    idle,           ///< no screen reads and nothing is under way
    asking,         ///< a request is out that no screen polls for
    listening,      ///< a screen reads; between two requests
    polling,        ///< a screen reads; a request is out
    failed,         ///< the link has failed since reading began; nothing is polled any more
    lost,           ///< as failed, but the screen goes on asking; between two requests
    retrying,       ///< as lost; a request is out
    message,        ///< the message about a bad frame waits for its answer
    messageEnded,   ///< the same, and no screen reads any more
    messageRestart, ///< the same, and reading begins anew with the answer
};

enum class Event {
    begin,    ///< a screen starts to read
    end,      ///< no screen reads any more
    request,  ///< one transfer is asked for, by the interval's tick or by itself
    frame,    ///< a good frame has come
    badFrame, ///< 48 bytes have come that are no frame
    fail,     ///< time-out, or the port cannot be used
    cancel,   ///< the port is closed or opened under the transfer
    answered, ///< the message has been answered
    giveUp,   ///< the screen does not go on after the failure any longer
};

/// What a screen has chosen for the time after a failure.
enum class AfterFailure { stop, goOn };

/// The state that an event leads to. A screen that goes on after a failure is led to `lost` where
/// another is led to `failed` or to the message.
State Next(State state, Event event, AfterFailure afterFailure);

/// A request is out, its time-out runs.
bool IsAwaiting(State state);

/// The interval's ticks send requests.
bool IsPolling(State state);

/// A screen reads: frames that the instrument sends by itself are taken, too.
bool IsReading(State state);

bool IsMessageOpen(State state);

} // namespace TransferState
