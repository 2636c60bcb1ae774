#include "files/TargetSeal.h"

#include "files/RecordedFiles.h"

#include <fstream>

namespace {

namespace fs = std::filesystem;
using FileOpr::TargetSeal;

/// The sum of a file that grows, or is changed by somebody else.
class TargetSealTest : public testing::Test {
protected:
    /// As of a file that is read for the first time.
    std::string Sum() const { return TargetSeal().Take(file)->sha256; }

    fake::Platform platform;
    const fs::path file = platform.folder.Path() / "run.4ch";
    TargetSeal seal;
};

TEST_F(TargetSealTest, A_file_that_has_grown_has_the_sum_of_all_of_it) {
    WriteBytes(file, "one");
    seal.Take(file);
    WriteBytes(file, "one and another");
    EXPECT_EQ(seal.Take(file)->sha256, Sum());
}

TEST_F(TargetSealTest, A_file_that_was_cut_has_the_sum_of_what_is_left) {
    WriteBytes(file, "one and another");
    seal.Take(file);
    WriteBytes(file, "one");
    const auto cut = seal.Take(file);
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->length, 3U);
    EXPECT_EQ(cut->sha256, Sum());
}

TEST_F(TargetSealTest, What_comes_while_it_is_read_is_none_of_it) {
    const std::string before(600'000, 'a');
    WriteBytes(file, before);
    const auto wanted = Sum();
    const auto sealed = seal.Take(file, [this] {
        std::ofstream(file, std::ios::binary | std::ios::app) << std::string(300'000, 'b');
    });
    ASSERT_TRUE(sealed);
    EXPECT_EQ(sealed->length, before.size());
    EXPECT_EQ(sealed->sha256, wanted);
}

TEST_F(TargetSealTest, Its_record_is_the_last_and_0_where_there_is_none) {
    const std::string header = "-----\r\nChannel\r\n-----\r\n";
    for (const std::string& without : {std::string(), std::string("ab"), header}) {
        WriteBytes(file, without);
        EXPECT_EQ(TargetSeal().Take(file)->record, 0) << without;
    }
    WriteBytes(file, header + "Record 8\tAt\r\nComment:\r\nRecord 9\tAt\r\nComment:\r\n");
    EXPECT_EQ(TargetSeal().Take(file)->record, 9);
}

TEST_F(TargetSealTest, A_file_that_is_missing_has_none) {
    EXPECT_FALSE(seal.Take(file));
}

} // namespace
