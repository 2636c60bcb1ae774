#include "history/ChainCheck.h"
#include "history/NotedHistory.h"
#include "support/FullDisk.h"

#include <unistd.h>

using namespace std::chrono_literals;

using HistoryLogFailure = NotedHistory;

TEST_F(HistoryLogFailure, On_a_full_disk_what_happens_waits_and_is_written_at_the_end) {
    {
        History::Log log(file, Telling());
        log.Add(Saying("before"));
        {
            const FullDisk full(1);
            log.Add(Saying("while full"));
            platform.clock.monotonic += 61s;
            log.Add(Saying("still full"));
        }
        EXPECT_EQ(told.size(), 1U);
        EXPECT_EQ(log.Entries({}).size(), 2U);
    }
    EXPECT_EQ(Kept(), (std::vector<std::string>{"The history begins.", "before", "while full",
                                                "still full"}));
    EXPECT_FALSE(History::CheckChain(*History::OpenStore(file)));
}

TEST_F(HistoryLogFailure, A_folder_that_cannot_be_written_is_told_once_and_hinders_nothing) {
    const bool mayWriteAnything = ::geteuid() == 0; // but not there
    const std::filesystem::path own = platform.folder.Path() / "own";
    std::filesystem::create_directory(own);
    std::filesystem::permissions(own, std::filesystem::perms::owner_read |
                                          std::filesystem::perms::owner_exec);
    {
        History::Log log((mayWriteAnything ? "/sys/kernel" : own) / file.filename(), Telling());
        log.Add(Saying("one"));
        platform.clock.monotonic += 61s;
        log.Add(Saying("two"));
        EXPECT_THROW(log.Entries({}), RunTimeError);
    }
    EXPECT_EQ(told.size(), 1U);
    std::filesystem::permissions(own, std::filesystem::perms::owner_all);
}

// An open file can be taken away here; Windows would refuse it.

TEST_F(HistoryLogFailure, A_file_that_is_taken_away_is_begun_anew_and_loses_only_what_it_held) {
    History::Log log(file, Telling());
    log.Add(Saying("one"));
    std::filesystem::remove(file);
    log.Add(Saying("two"));
    EXPECT_EQ(Kept(), (std::vector<std::string>{"The history begins.", "two"}));
    EXPECT_TRUE(told.empty());
}

TEST_F(HistoryLogFailure, A_file_that_another_copy_has_put_aside_takes_nothing_more) {
    History::Log log(file, Telling());
    log.Add(Saying("one"));
    std::filesystem::rename(file, file.string() + ".damaged");
    const std::string before = ReadBytes(file.string() + ".damaged");
    { const auto newOne = History::OpenStore(file); }
    log.Add(Saying("two"));
    EXPECT_EQ(Kept().back(), "two");
    EXPECT_EQ(ReadBytes(file.string() + ".damaged"), before);
}
