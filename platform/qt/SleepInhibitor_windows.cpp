#include "platform/qt/SleepInhibitor.h"

#include <windows.h>

namespace platform {

namespace {

/// The system keeps one state a thread: the program's one thread holds one lock at a time.
class ExecutionState : public WakeLock {
public:
    ExecutionState() = default;
    ~ExecutionState() override { SetThreadExecutionState(ES_CONTINUOUS); }
    ExecutionState(const ExecutionState&) = delete;
    ExecutionState& operator=(const ExecutionState&) = delete;
};

} // namespace

std::unique_ptr<WakeLock> InhibitSleep(const QString& /*reason*/) {
    if (SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED) == 0)
        return nullptr;
    return std::make_unique<ExecutionState>();
}

} // namespace platform
