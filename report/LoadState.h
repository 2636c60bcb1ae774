#pragma once

namespace Mreport {

/// Whether a load is at work, and whether ESC has asked for its end. Events run while it is.
class LoadState {
public:
    /// A load is at work while this lives, however it ends; the mouse pointer shows it.
    class AtWork {
    public:
        /// The state must outlive the object.
        explicit AtWork(LoadState& state);
        ~AtWork();
        AtWork(const AtWork&) = delete;
        AtWork& operator=(const AtWork&) = delete;

    private:
        LoadState& state_;
    };

    bool Idle() const { return state_ == State::idle; }
    bool Stopping() const { return state_ == State::stopping; }

    /// ESC: asks a load at work for its end; nothing otherwise.
    void RequestStop();

    /// The load has read so many lines since it let events run.
    void Count(int lines) { linesToClockRead_ -= lines; }

    /// Called for each line: lets events run where enough lines have been counted.
    void LetEventsRun() {
        if (linesToClockRead_ <= 0)
            ReadClock();
    }

private:
    void ReadClock();

    enum class State { idle, loading, stopping };

    State state_ = State::idle;
    int linesToClockRead_ = 0;
};

} // namespace Mreport
