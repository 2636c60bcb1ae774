#include "faults/FailingCalls.h"
#include "history/ChainCheck.h"
#include "history/NotedHistory.h"

using namespace std::chrono_literals;

namespace {

using FailingCalls::Fault;
using Texts = std::vector<std::string>;

class HistoryFaults : public NotedHistory, public testing::WithParamInterface<Fault> {
protected:
    /// What happens in a program's life, the last of it when a failure may have passed. Not
    /// finished where it was told that the history cannot be kept.
    FailingCalls::Outcome Live(int failing) {
        const auto life = [this] {
            bool troubled = false;
            {
                History::Log log(file, [&troubled](const auto&) { troubled = true; });
                for (const char* text : {"one", "two"})
                    log.Add(Saying(text));
                platform.clock.monotonic += 61s;
                log.Add(Saying("three"));
            }
            if (troubled)
                ::_exit(0);
        };
        return FailingCalls::InChild(life, failing, GetParam());
    }

    /// What a life leaves behind whose `failing`th call met the fault, after `older`.
    void LookAfter(int failing, const Texts& older) {
        SCOPED_TRACE("call " + std::to_string(failing));
        const auto outcome = Live(failing);
        { // the next start
            History::Log log(file, Telling());
            log.Add(Saying("next"));
        }
        EXPECT_EQ(told, Texts());
        EXPECT_TRUE(Beside(".damaged").empty());
        EXPECT_FALSE(History::CheckChain(*History::OpenStore(file)));
        const bool passes = GetParam() != Fault::gone && GetParam() != Fault::end;
        ExpectKept(older, outcome.finished || passes);
    }

    /// In their order, none twice; of the life's own all, or the first of them.
    void ExpectKept(const Texts& older, bool all) const {
        Texts whole = older;
        whole.insert(whole.end(), {"one", "two", "three"});
        Texts kept = Kept();
        ASSERT_FALSE(kept.empty());
        EXPECT_EQ(kept.back(), "next");
        kept.pop_back();
        ASSERT_GE(kept.size(), all ? whole.size() : older.size());
        ASSERT_LE(kept.size(), whole.size());
        EXPECT_TRUE(std::equal(kept.begin(), kept.end(), whole.begin()))
            << testing::PrintToString(kept);
    }

    void RemoveHistory() {
        for (const auto& each : Beside(file.filename().string()))
            std::filesystem::remove(each);
        told.clear();
    }
};

} // namespace

TEST_P(HistoryFaults, Whichever_call_fails_while_it_goes_on_no_entry_is_lost_or_doubled) {
    const auto begin = [this] {
        RemoveHistory();
        History::Log(file, Telling()).Add(Saying("before"));
    };
    begin();
    const int calls = Live(0).calls;
    ASSERT_GT(calls, 20);
    for (int failing = 1; failing <= calls; ++failing) {
        begin();
        LookAfter(failing, {"The history begins.", "before"});
    }
}

TEST_P(HistoryFaults, Whichever_call_fails_while_it_begins_the_next_start_goes_on_with_it) {
    const int calls = Live(0).calls;
    ASSERT_GT(calls, 20);
    for (int failing = 1; failing <= calls; ++failing) {
        RemoveHistory();
        LookAfter(failing, {"The history begins."});
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, HistoryFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
