#include "faults/FailingCalls.h"
#include "faults/TakenMeasurement.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <new>

namespace {

namespace fs = std::filesystem;
using FailingCalls::Fault;

/// What a child process was told, in memory that it shares with the test.
class Shared {
public:
    Shared()
        : memory_(::mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                         -1, 0)),
          told_(new (memory_) Told) {}
    ~Shared() { ::munmap(memory_, sizeof(Told)); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    Told& operator*() const { return *told_; }

private:
    void* memory_;
    Told* told_;
};

/// A fault, met by each of the calls on files that a measurement makes.
class RecordingFaults : public testing::TestWithParam<Fault> {
protected:
    RecordingFaults() { SetUpRun(); }

    /// Takes a measurement in a folder of its own, lets a next start recover, and compares.
    int MeasureAndLook(int failing) {
        const fake::Platform platform;
        SetUpRun();
        const fs::path folder = platform.folder.Path();
        WriteBytes(folder / "second.4ch", oldMeasurement);
        const Shared told;
        const auto taken = FailingCalls::InChild([&] { TakenMeasurement(folder, *told).Take(); },
                                                 failing, GetParam());
        EXPECT_TRUE(FailingCalls::InChild(RecoverAll).finished);
        Remains(folder).ExpectAllOf(*told);
        return taken.calls;
    }

    /// Takes a measurement that ends in the `ending`th call, lets a start meet the fault in the
    /// `failing`th of its own while it recovers, and the next one do what is left.
    int RecoverAndLook(int ending, int failing) {
        const fake::Platform platform;
        SetUpRun();
        const fs::path folder = platform.folder.Path();
        WriteBytes(folder / "second.4ch", oldMeasurement);
        const Shared told;
        FailingCalls::InChild([&] { TakenMeasurement(folder, *told).Take(); }, ending, Fault::end);
        const auto recovered = FailingCalls::InChild(RecoverAll, failing, GetParam());
        EXPECT_TRUE(FailingCalls::InChild(RecoverAll).finished);
        Remains(folder).ExpectAllOf(*told);
        return recovered.calls;
    }
};

} // namespace

TEST_P(RecordingFaults, Whichever_call_fails_no_record_that_was_saved_is_lost_or_doubled) {
    const int calls = MeasureAndLook(0);
    ASSERT_GT(calls, 100);
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE("call " + std::to_string(failing));
        MeasureAndLook(failing);
    }
}

TEST_P(RecordingFaults, Whichever_call_fails_in_a_recovery_the_next_start_completes_it) {
    const int measuringCalls = MeasureAndLook(0);
    for (int ending = 20; ending <= measuringCalls; ending += 19) {
        const int calls = RecoverAndLook(ending, 0);
        for (int failing = 1; failing <= calls; ++failing) {
            SCOPED_TRACE("ended in call " + std::to_string(ending) + ", recovery failed in call " +
                         std::to_string(failing));
            RecoverAndLook(ending, failing);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, RecordingFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
