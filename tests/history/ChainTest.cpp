#include "history/ChainCheck.h"
#include "history/Histories.h"
#include "support/FakePlatform.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class HistoryChain : public testing::Test {
protected:
    HistoryChain() {
        const auto store = History::OpenStore(file);
        for (const char* text : {"first entry", "second entry", "third entry"})
            Say(*store, text);
    }

    /// As somebody does who has the file and a tool for such files.
    void Meddle(const std::string& sql) const {
        SQLite::Database database(file, SQLite::OPEN_READWRITE);
        database.exec("DROP TRIGGER noChange; DROP TRIGGER noRemoval; DROP TRIGGER noReplacement");
        database.exec(sql);
    }

    std::string Finding() const {
        const auto store = History::OpenStore(file);
        const auto wrong = History::CheckChain(*store);
        return wrong ? std::to_string(wrong->row) + ": " + wrong->reason : "";
    }

    fake::Platform platform;
    const fs::path file = platform.folder.Path() / "Vantrel.history";
};

} // namespace

TEST_F(HistoryChain, A_row_that_was_changed_is_found) {
    Meddle("UPDATE entries SET text = 'other entry' WHERE number = 2");
    EXPECT_EQ(Finding(), "2: it was changed");
}

TEST_F(HistoryChain, A_row_that_was_changed_with_its_sum_breaks_the_chain_behind_it) {
    const auto rows = History::OpenStore(file)->Rows({});
    History::Row changed = rows[1];
    changed.fields[History::Row::text] = "other entry";
    Meddle("UPDATE entries SET text = 'other entry', sum = '" + History::SumOf(changed) +
           "' WHERE number = 2");
    EXPECT_EQ(Finding(), "3: it does not follow the entry before it");
}

TEST_F(HistoryChain, A_row_that_was_removed_is_found_wherever_it_stood) {
    const std::string whole = ReadBytes(file);
    for (const int number : {1, 2, 3}) {
        WriteBytes(file, whole);
        Meddle("DELETE FROM entries WHERE number = " + std::to_string(number));
        EXPECT_EQ(Finding(), std::to_string(number) + ": it is missing");
    }
}

TEST_F(HistoryChain, A_changed_byte_of_any_text_in_the_file_is_found) {
    const std::string whole = ReadBytes(file);
    for (const char* text : {"first entry", "second entry", "third entry"}) {
        const auto place = whole.find(text);
        ASSERT_NE(place, std::string::npos);
        for (std::size_t i = place; i < place + std::string(text).size(); ++i) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ 1);
            WriteBytes(file, bytes);
            EXPECT_NE(Finding(), "") << i;
        }
    }
}

// The bytes between the texts are the file's own: one changed byte makes it damaged, breaks the
// chain, or leaves every row as it was written.
TEST_F(HistoryChain, No_changed_byte_of_the_file_changes_a_row_unnoticed) {
    constexpr std::size_t stride = 23; // all of them would take a minute
    const std::string whole = ReadBytes(file);
    const auto texts = TextsOf(*History::OpenStore(file));
    int noticed = 0;
    for (std::size_t i = 0; i < whole.size(); i += stride) {
        std::string bytes = whole;
        bytes[i] = static_cast<char>(bytes[i] ^ 0x15);
        WriteBytes(file, bytes);
        try {
            const auto store = History::OpenStore(file);
            if (History::CheckChain(*store))
                ++noticed;
            else
                EXPECT_EQ(TextsOf(*store), texts) << "byte " << i;
        } catch (const RunTimeError&) {
            ++noticed;
        }
        fs::remove(file.string() + "-wal");
        fs::remove(file.string() + "-shm");
    }
    EXPECT_GT(noticed, 10);
}

TEST_F(HistoryChain, The_walk_goes_in_steps_and_tells_what_it_found) {
    const auto store = History::OpenStore(file);
    History::ChainCheck check(*store);
    EXPECT_TRUE(check.Step(2));
    EXPECT_EQ(check.Walked(), 2);
    EXPECT_FALSE(check.Step(2));
    EXPECT_EQ(check.Text(), "3 entries, all as they were written");
    Meddle("UPDATE entries SET analyst = 'Nobody' WHERE number = 3");
    History::ChainCheck again(*store);
    EXPECT_FALSE(again.Step(10));
    EXPECT_EQ(again.Text(), "Entry 3 is not as it was written: it was changed");
    EXPECT_FALSE(again.Step(10));
}
