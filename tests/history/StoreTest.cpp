#include "history/ChainCheck.h"
#include "history/Histories.h"
#include "support/FakePlatform.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <thread>

namespace {

using Texts = std::vector<std::string>;

class HistoryStore : public testing::Test {
protected:
    fake::Platform platform;
    const std::filesystem::path file = platform.folder.Path() / "Vantrel.history";
    std::unique_ptr<History::Store> store = History::OpenStore(file);
};

} // namespace

TEST_F(HistoryStore, What_was_written_is_there_when_it_is_opened_again_with_its_numbers) {
    Say(*store, "first");
    Say(*store, "second");
    store = History::OpenStore(file);
    Say(*store, "third");
    EXPECT_EQ(TextsOf(*store), (Texts{"first", "second", "third"}));
    const auto rows = store->Rows({});
    EXPECT_EQ(rows[2].number, 3);
    EXPECT_EQ(rows[2].before, rows[1].sum);
    EXPECT_EQ(rows[0].before, History::noSum);
    EXPECT_EQ(store->LastNumber(), 3);
    EXPECT_FALSE(History::CheckChain(*store));
}

TEST_F(HistoryStore, Neither_change_nor_removal_nor_replacement_is_taken) {
    Say(*store, "first");
    SQLite::Database other(file, SQLite::OPEN_READWRITE);
    EXPECT_THROW(other.exec("UPDATE entries SET text = 'other'"), SQLite::Exception);
    EXPECT_THROW(other.exec("DELETE FROM entries"), SQLite::Exception);
    EXPECT_THROW(other.exec("INSERT OR REPLACE INTO entries SELECT 1, at, kind, analyst, user, "
                            "channel, electrode, serialNo, file, 'other', data, before, sum FROM "
                            "entries"),
                 SQLite::Exception);
    EXPECT_EQ(TextsOf(*store), Texts{"first"});
}

TEST_F(HistoryStore, A_wish_tells_which_rows_come_and_in_what_order) {
    auto calibration = Saying("of Ca");
    calibration[History::Row::kind] = "Calibration";
    calibration[History::Row::electrode] = "Ca";
    calibration[History::Row::serialNo] = "A1";
    auto later = calibration;
    later[History::Row::at] = "2026-11-22 00:00:00";
    later[History::Row::text] = "of Ca later";
    const std::vector<History::Row::Fields> rows = {Saying("a setting"), calibration, later};
    store->Append(rows);

    History::Wish wish;
    wish.kind = History::Kind::calibration;
    wish.electrode = "Ca";
    wish.serialNo = "A1";
    EXPECT_EQ(TextsOf(*store, wish), (Texts{"of Ca", "of Ca later"}));
    wish.newestFirst = true;
    wish.most = 1;
    EXPECT_EQ(TextsOf(*store, wish), Texts{"of Ca later"});
    wish.serialNo = "A2";
    EXPECT_EQ(TextsOf(*store, wish), Texts{});
    History::Wish day;
    day.from = "2026-11-21 00:00:00";
    day.to = "2026-11-21 23:59:59";
    EXPECT_EQ(TextsOf(*store, day), (Texts{"a setting", "of Ca"}));
    History::Wish rest;
    rest.after = 2;
    EXPECT_EQ(TextsOf(*store, rest), Texts{"of Ca later"});
}

TEST_F(HistoryStore, Two_programs_write_side_by_side_into_one_chain) {
    constexpr int entries = 100;
    const auto write = [this](const std::string& name) {
        const auto own = History::OpenStore(file);
        for (int i = 0; i < entries; ++i)
            Say(*own, name + std::to_string(i));
    };
    std::thread first(write, "a");
    std::thread second(write, "b");
    first.join();
    second.join();
    EXPECT_EQ(store->Rows({}).size(), std::size_t{2 * entries});
    const auto wrong = History::CheckChain(*store);
    EXPECT_FALSE(wrong) << wrong->row << ": " << wrong->reason;
}

TEST_F(HistoryStore, Rows_of_which_one_cannot_be_written_are_not_written_at_all) {
    Say(*store, "first");
    SQLite::Database other(file, SQLite::OPEN_READWRITE);
    other.exec("CREATE TRIGGER refuse BEFORE INSERT ON entries WHEN NEW.text = 'bad' "
               "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const std::vector<History::Row::Fields> rows = {Saying("good"), Saying("bad")};
    EXPECT_THROW(store->Append(rows), RunTimeError);
    EXPECT_EQ(TextsOf(*store), Texts{"first"});
    Say(*store, "second");
    EXPECT_FALSE(History::CheckChain(*store));
}

TEST_F(HistoryStore, A_file_of_another_kind_is_no_history) {
    const auto text = platform.folder.Path() / "text";
    WriteBytes(text, std::string(5000, 'x'));
    EXPECT_THROW(History::OpenStore(text), History::Damaged);
    const auto foreign = platform.folder.Path() / "foreign";
    SQLite::Database(foreign, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
        .exec("CREATE TABLE something (a)");
    EXPECT_THROW(History::OpenStore(foreign), History::Damaged);
}

TEST_F(HistoryStore, A_file_of_a_later_version_is_left_alone) {
    store.reset();
    SQLite::Database(file, SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 2");
    try {
        History::OpenStore(file);
        FAIL() << "it was opened";
    } catch (const History::Damaged&) {
        FAIL() << "it was taken for damaged";
    } catch (const RunTimeError& error) {
        EXPECT_NE(std::string(error.what()).find("later version"), std::string::npos);
    }
}
