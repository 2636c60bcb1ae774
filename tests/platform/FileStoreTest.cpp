#include "base/RunTimeError.h"
#include "platform/System.h"
#include "support/FakePlatform.h"
#include "support/FilesIn.h"

#include <gtest/gtest.h>

// The same behaviour from the system's own calls on every system.

namespace {

class FileStoreTest : public testing::Test {
protected:
    std::filesystem::path File() const { return folder.Path() / "run.4ch"; }
    std::size_t FilesInFolder() const { return FilesIn(folder.Path()); }

    fake::TemporaryFolder folder;
    std::unique_ptr<platform::FileStore> store = platform::MakeFileStore();
};

/// What an operation throws; empty when it does not.
template <typename Operation>
std::string ErrorOf(Operation operation) {
    try {
        operation();
    } catch (const RunTimeError& error) {
        return error.what();
    }
    return {};
}

TEST_F(FileStoreTest, Two_unique_files_are_new_empty_and_bear_the_prefix) {
    const auto first = store->CreateUnique(folder.Path(), "vantrel-");
    const auto second = store->CreateUnique(folder.Path(), "vantrel-");
    EXPECT_NE(first, second);
    EXPECT_EQ(first.parent_path(), folder.Path());
    EXPECT_TRUE(first.filename().string().starts_with("vantrel-"));
    EXPECT_EQ(ReadBytes(first), "");
}

TEST_F(FileStoreTest, A_unique_file_in_a_missing_folder_is_refused_with_the_reason) {
    const auto missing = folder.Path() / "missing";
    EXPECT_NE(ErrorOf([&] { store->CreateUnique(missing, "x"); }).find("Path not found"),
              std::string::npos);
}

TEST_F(FileStoreTest, Appended_bytes_follow_what_the_file_holds) {
    WriteBytes(File(), "head\r\n");
    const auto file = store->OpenForAppend(File());
    file->Append("one\r\n", true);
    file->Append("two\r\n", false);
    EXPECT_EQ(ReadBytes(File()), "head\r\none\r\ntwo\r\n");
    EXPECT_EQ(file->Size(), 16U);
}

TEST_F(FileStoreTest, Appending_makes_a_missing_file_but_no_missing_folder) {
    store->OpenForAppend(File())->Append("x", true);
    EXPECT_EQ(ReadBytes(File()), "x");
    const auto missing = folder.Path() / "missing" / "run.4ch";
    EXPECT_NE(ErrorOf([&] { store->OpenForAppend(missing); }).find("Path not found"),
              std::string::npos);
}

TEST_F(FileStoreTest, Two_open_files_of_one_name_append_behind_each_other) {
    const auto first = store->OpenForAppend(File());
    const auto second = store->OpenForAppend(File());
    first->Append("a", true);
    second->Append("b", true);
    first->Append("c", true);
    EXPECT_EQ(ReadBytes(File()), "abc");
}

TEST_F(FileStoreTest, A_replaced_file_holds_the_new_bytes_and_nothing_stays_beside_it) {
    WriteBytes(File(), "a long old text");
    store->Replace(File(), "new");
    EXPECT_EQ(ReadBytes(File()), "new");
    store->Replace(folder.Path() / "fresh", std::string("\0\n", 2));
    EXPECT_EQ(ReadBytes(folder.Path() / "fresh"), std::string("\0\n", 2));
    EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(FileStoreTest, A_replacement_that_fails_leaves_nothing_behind) {
    std::filesystem::create_directories(File() / "in the way");
    EXPECT_NE(ErrorOf([&] { store->Replace(File(), "new"); }).find("Writing"), std::string::npos);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileStoreTest, The_old_file_stays_until_its_replacement_is_committed) {
    WriteBytes(File(), "old");
    const auto replacement = store->BeginReplacement(File(), platform::Readers::asUsual);
    replacement->Write("one ");
    replacement->Write("two");
    EXPECT_EQ(ReadBytes(File()), "old");
    EXPECT_EQ(ReadBytes(replacement->HalfFile()), "one two");
    replacement->Commit();
    EXPECT_EQ(ReadBytes(File()), "one two");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileStoreTest, A_replacement_that_is_given_up_is_gone) {
    WriteBytes(File(), "old");
    store->BeginReplacement(File(), platform::Readers::user)->Write("new");
    EXPECT_EQ(ReadBytes(File()), "old");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileStoreTest, A_replacement_can_be_written_by_its_name) {
    const auto replacement = store->BeginReplacement(File(), platform::Readers::asUsual);
    WriteBytes(replacement->HalfFile(), "by another");
    replacement->Commit();
    EXPECT_EQ(ReadBytes(File()), "by another");
}

TEST_F(FileStoreTest, A_replacement_in_a_missing_folder_is_refused_with_the_reason) {
    const auto missing = folder.Path() / "missing" / "table.csv";
    const std::string error =
        ErrorOf([&] { store->BeginReplacement(missing, platform::Readers::asUsual); });
    EXPECT_NE(error.find("table.csv"), std::string::npos) << error;
    EXPECT_TRUE(error.ends_with(": Path not found")) << error;
}

TEST_F(FileStoreTest, A_file_is_cut_to_its_size) {
    WriteBytes(File(), "whole half");
    store->Truncate(File(), 5);
    EXPECT_EQ(ReadBytes(File()), "whole");
    const auto missing = folder.Path() / "missing";
    EXPECT_NE(ErrorOf([&] { store->Truncate(missing, 0); }).find("Path not found"),
              std::string::npos);
}

TEST_F(FileStoreTest, A_lock_keeps_a_second_one_away_until_it_ends) {
    WriteBytes(File(), "text");
    auto lock = store->TryLock(File());
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(store->TryLock(File()), nullptr);
    lock.reset();
    EXPECT_NE(store->TryLock(File()), nullptr);
}

TEST_F(FileStoreTest, A_locked_file_can_be_read_and_written) {
    WriteBytes(File(), "text");
    const auto lock = store->TryLock(File());
    EXPECT_EQ(ReadBytes(File()), "text");
    store->OpenForAppend(File())->Append(" and more", true);
    EXPECT_EQ(ReadBytes(File()), "text and more");
    // The other open files of the process end no lock.
    EXPECT_EQ(store->TryLock(File()), nullptr);
}

TEST_F(FileStoreTest, A_missing_file_cannot_be_locked) {
    EXPECT_NE(ErrorOf([&] { store->TryLock(File()); }).find("Path not found"), std::string::npos);
}

TEST_F(FileStoreTest, An_error_names_the_operation_the_file_and_the_reason) {
    const auto missing = folder.Path() / "no such folder" / "run.4ch";
    const std::string error = ErrorOf([&] { store->OpenForAppend(missing); });
    EXPECT_TRUE(error.starts_with("Opening ")) << error;
    EXPECT_NE(error.find("run.4ch"), std::string::npos) << error;
    EXPECT_TRUE(error.ends_with(": Path not found")) << error;
}

TEST_F(FileStoreTest, Files_with_accented_and_foreign_names_are_kept) {
    const auto file = folder.Path() / std::filesystem::path(u8"Messung é Ж.4ch");
    store->OpenForAppend(file)->Append("x", true);
    store->Replace(file, "y");
    EXPECT_EQ(ReadBytes(file), "y");
}

TEST_F(FileStoreTest, The_room_of_a_disk_is_asked_by_a_file_that_need_not_be_there) {
    const auto room = store->RoomOfDisk(File());
    std::error_code failed;
    const auto space = std::filesystem::space(folder.Path(), failed);
    ASSERT_FALSE(failed);
    // Other programs write meanwhile.
    constexpr double share = 0.1;
    EXPECT_NEAR(static_cast<double>(room.free_bytes), static_cast<double>(space.available),
                share * static_cast<double>(space.capacity));
    EXPECT_EQ(store->RoomOfDisk(folder.Path() / "other").disk, room.disk);
    const auto missing = folder.Path() / "missing" / "run.4ch";
    EXPECT_NE(ErrorOf([&] { store->RoomOfDisk(missing); }).find("Path not found"),
              std::string::npos);
}

} // namespace
