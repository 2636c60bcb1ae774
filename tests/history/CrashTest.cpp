#include "history/ChainCheck.h"
#include "history/Histories.h"
#include "support/FakePlatform.h"
#include "support/ToldProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

namespace {

/// VANTREL_HISTORY_KILLS gives the number for a long run.
int KillsWanted() {
    constexpr int usual = 30;
    const char* wanted = std::getenv("VANTREL_HISTORY_KILLS");
    return wanted == nullptr ? usual : std::atoi(wanted);
}

/// Lets a program write into the history, kills it after a while, and tells the last number that it
/// said to be stored.
std::int64_t WriteUntilKilled(const std::filesystem::path& file, std::chrono::microseconds life) {
    ToldProcess writer(HISTORY_WRITER, {file.string()});
    EXPECT_TRUE(writer.AwaitWord()) << "the writer ended by itself";
    std::this_thread::sleep_for(life);
    writer.Kill();
    return std::stoll(writer.LastLine());
}

} // namespace

TEST(HistoryCrash, What_was_said_to_be_stored_is_there_however_often_the_program_is_killed) {
    const int kills = KillsWanted();
    const fake::Platform platform;
    const auto file = platform.folder.Path() / "Vantrel.history";
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> life_us(0, 10000);
    std::int64_t before = 0;
    for (int kill = 0; kill < kills; ++kill) {
        SCOPED_TRACE("kill " + std::to_string(kill));
        const std::int64_t said =
            WriteUntilKilled(file, std::chrono::microseconds(life_us(random)));
        ASSERT_GT(said, before);
        before = said;
        const auto store = History::OpenStore(file);
        const auto wrong = History::CheckChain(*store);
        ASSERT_FALSE(wrong) << wrong->row << ": " << wrong->reason;
        // One more may have been written without its return having been seen.
        ASSERT_GE(store->LastNumber(), said);
        ASSERT_LE(store->LastNumber(), said + 1);
        const auto texts = TextsOf(*store);
        for (std::size_t i = 0; i < texts.size(); ++i)
            ASSERT_EQ(texts[i], std::to_string(i + 1));
    }
}
