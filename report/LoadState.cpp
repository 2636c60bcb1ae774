#include "report/LoadState.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"

namespace Mreport {

LoadState::AtWork::AtWork(LoadState& state) : state_(state) {
    state_.state_ = State::loading;
    platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
}

LoadState::AtWork::~AtWork() {
    state_.state_ = State::idle;
    platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
}

void LoadState::RequestStop() {
    if (state_ == State::loading)
        state_ = State::stopping;
}

/// The clock is read once for several lines, a matter of microseconds: read for each, it would take
/// as long as the reading itself.
void LoadState::ReadClock() {
    constexpr int linesPerClockRead = 64;
    linesToClockRead_ = linesPerClockRead;
    Mcommon::LetEventsRun();
}

} // namespace Mreport
