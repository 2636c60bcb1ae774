#include "history/ChainCheck.h"
#include "history/NotedHistory.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace std::chrono_literals;

namespace fs = std::filesystem;
using HistoryLog = NotedHistory;
using Texts = std::vector<std::string>;

TEST_F(HistoryLog, It_begins_in_the_users_data_folder_and_takes_down_what_it_is_given) {
    EXPECT_EQ(file, platform.places.DataParentFolder() / "Vantrel.history");
    {
        History::Log log(file, Telling());
        EXPECT_EQ(History::Log::Current(), &log);
        log.Add(Saying("one"));
        EXPECT_EQ(Kept(), (Texts{"The history begins.", "one"})); // on the disk already
    }
    EXPECT_EQ(History::Log::Current(), nullptr);
    { const History::Log again(file, Telling()); }
    EXPECT_EQ(Kept(), (Texts{"The history begins.", "one"}));
    EXPECT_TRUE(told.empty());
}

TEST_F(HistoryLog, A_folder_that_takes_no_file_is_told_once_and_what_happens_waits) {
    const auto blocked = platform.folder.Path() / "folder" / "Vantrel.history";
    History::Log log(blocked, Telling());
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("The history cannot be kept at this time"), std::string::npos);
    log.Add(Saying("one"));
    EXPECT_THROW(log.Entries({}), RunTimeError);

    fs::create_directories(blocked.parent_path());
    log.Add(Saying("two")); // too early for another try
    EXPECT_FALSE(fs::exists(blocked));
    platform.clock.monotonic += 61s;
    log.Add(Saying("three"));
    EXPECT_EQ(TextsOf(*History::OpenStore(blocked)),
              (Texts{"The history begins.", "one", "two", "three"}));
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(HistoryLog, A_damaged_file_is_put_aside_as_it_is_and_a_new_one_begins) {
    const std::string damage(5000, 'x');
    WriteBytes(file, damage);
    {
        History::Log log(file, Telling());
        log.Add(Saying("one"));
    }
    const auto aside = Beside("Vantrel.history.damaged 2003-03-07 14.05.33");
    ASSERT_EQ(aside.size(), 1U);
    EXPECT_EQ(ReadBytes(aside[0]), damage);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("kept as Vantrel.history.damaged 2003-03-07 14.05.33"),
              std::string::npos);
    const Texts kept = Kept();
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_NE(kept[0].find("was damaged and is kept as"), std::string::npos);
    EXPECT_EQ(kept[1], "one");
}

TEST_F(HistoryLog, A_second_damaged_file_does_not_take_the_place_of_the_first) {
    for (int i = 0; i < 2; ++i) {
        WriteBytes(file, std::string(5000, 'x'));
        History::Log log(file, Telling());
    }
    EXPECT_EQ(Beside(".damaged").size(), 2U);
}

TEST_F(HistoryLog, While_another_program_holds_the_file_what_happens_waits) {
    History::Log log(file, Telling());
    {
        SQLite::Database other(file, SQLite::OPEN_READWRITE);
        const SQLite::Transaction held(other, SQLite::TransactionBehavior::IMMEDIATE);
        log.Add(Saying("one"));
        EXPECT_EQ(told.size(), 1U);
    }
    platform.clock.monotonic += 61s;
    log.Add(Saying("two"));
    EXPECT_EQ(Kept(), (Texts{"The history begins.", "one", "two"}));
}
