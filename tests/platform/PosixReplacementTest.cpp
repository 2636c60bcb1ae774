#include "base/RunTimeError.h"
#include "platform/System.h"
#include "support/FakePlatform.h"
#include "support/FullDisk.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using platform::Readers;

class PosixReplacementTest : public testing::Test {
protected:
    PosixReplacementTest() { ::umask(022); }
    ~PosixReplacementTest() override { ::umask(before_); }

    static mode_t AccessOf(const std::filesystem::path& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_mode & 0777;
    }

    fake::TemporaryFolder folder;
    std::filesystem::path file = folder.Path() / "table.csv";
    std::unique_ptr<platform::FileStore> store = platform::MakeFileStore();

private:
    mode_t before_ = ::umask(0);
};

TEST_F(PosixReplacementTest, A_new_document_is_readable_as_any_other_and_a_private_file_is_not) {
    store->Replace(file, "x", Readers::asUsual);
    EXPECT_EQ(AccessOf(file), 0644U);
    store->Replace(folder.Path() / "note", "x");
    EXPECT_EQ(AccessOf(folder.Path() / "note"), 0600U);
}

TEST_F(PosixReplacementTest, The_old_file_s_access_is_kept_and_not_undercut_meanwhile) {
    for (const mode_t access : {0600U, 0640U, 0666U}) {
        WriteBytes(file, "old");
        ASSERT_EQ(::chmod(file.c_str(), access), 0);
        const auto replacement = store->BeginReplacement(file, Readers::asUsual);
        EXPECT_EQ(AccessOf(replacement->HalfFile()), 0600U);
        replacement->Commit();
        EXPECT_EQ(AccessOf(file), access);
    }
}

TEST_F(PosixReplacementTest, A_full_disk_is_told_and_leaves_the_old_file) {
    WriteBytes(file, "old");
    std::string error;
    try {
        const FullDisk limit(100);
        store->Replace(file, std::string(1000, 'x'), Readers::asUsual);
    } catch (const RunTimeError& caught) {
        error = caught.what();
    }
    EXPECT_TRUE(error.ends_with("table.csv: Disk full")) << error;
    EXPECT_EQ(ReadBytes(file), "old");
}

TEST_F(PosixReplacementTest, A_link_stays_and_what_it_leads_to_is_replaced) {
    const auto real = folder.Path() / "real.csv";
    WriteBytes(real, "old");
    std::filesystem::create_symlink(real, file);
    store->Replace(file, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(ReadBytes(real), "new");
}

} // namespace
