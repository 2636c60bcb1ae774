#include "settings/SettingsLines.h"
#include "settings/mWinInit.h"
#include "support/DamagedSettings.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// What the settings file promises beyond the system's calls on Windows: untouched bytes, whole
// files after a crash, and no harm from files of any kind.

namespace {

class PosixProfileFileTest : public testing::Test {
protected:
    void File(const std::string& bytes) { WriteBytes(platform.SettingsFile(), bytes); }
    std::string FileNow() { return ReadBytes(platform.SettingsFile()); }
    bool Write(const std::string& value, const std::string& key = "K") {
        return platform.profile->Write("Hardware", key, value);
    }
    std::string Read(const std::string& key = "K") {
        return platform.profile->GetString("Hardware", key, "fallback", 130);
    }

    fake::Platform platform;
};

TEST_F(PosixProfileFileTest, A_change_touches_its_own_line_alone) {
    File("; mine\n\n junk \r\n[ A ] x\n b = \"2\" \n[Hardware]\r\n;c\r\n J = 1\n K = 2\r\n\r\n");
    Write("v");
    EXPECT_EQ(FileNow(),
              "; mine\n\n junk \r\n[ A ] x\n b = \"2\" \n[Hardware]\r\n;c\r\n J = 1\nK=v\r\n\r\n");
}

TEST_F(PosixProfileFileTest, A_value_that_the_file_already_holds_changes_nothing) {
    File("[Hardware]\n K = v ; x \n");
    Write("v ; x");
    EXPECT_EQ(FileNow(), "[Hardware]\n K = v ; x \n");
}

TEST_F(PosixProfileFileTest, A_new_key_goes_before_the_blank_lines_and_comments_that_follow) {
    File("[Hardware]\r\nJ=1\r\n\r\n; about B\r\n[B]\r\n");
    Write("v");
    EXPECT_EQ(FileNow(), "[Hardware]\r\nJ=1\r\nK=v\r\n\r\n; about B\r\n[B]\r\n");
}

TEST_F(PosixProfileFileTest, A_new_key_of_a_section_without_keys_follows_its_section_line) {
    File("[Hardware]\r\n\r\n[B]\r\n");
    Write("v");
    EXPECT_EQ(FileNow(), "[Hardware]\r\nK=v\r\n\r\n[B]\r\n");
}

TEST_F(PosixProfileFileTest, A_new_section_goes_to_the_end_behind_a_finished_line) {
    File("[B]\nx=1");
    Write("v");
    EXPECT_EQ(FileNow(), "[B]\nx=1\r\n[Hardware]\r\nK=v\r\n");
}

TEST_F(PosixProfileFileTest, Characters_beyond_the_code_page_stay_in_a_Unicode_file) {
    File("\xEF\xBB\xBF[\xD0\x96]\n\xF0\x9F\x98\x80=1\n[Hardware]\nK=1\n");
    Write("\xE9");
    EXPECT_EQ(FileNow(), "\xEF\xBB\xBF[\xD0\x96]\n\xF0\x9F\x98\x80=1\n[Hardware]\nK=\xC3\xA9\r\n");
}

TEST_F(PosixProfileFileTest, The_file_keeps_its_permissions_and_a_new_one_is_its_users_own) {
    Write("1");
    struct stat status {};
    ASSERT_EQ(::stat(platform.SettingsFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    ASSERT_EQ(::chmod(platform.SettingsFile().c_str(), 0640), 0);
    Write("2");
    ASSERT_EQ(::stat(platform.SettingsFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(PosixProfileFileTest, A_link_stays_a_link_and_its_target_is_changed) {
    const auto target = platform.folder.Path() / "shared.ini";
    WriteBytes(target, "[Hardware]\r\nK=1\r\n");
    std::filesystem::create_symlink(target, platform.SettingsFile());
    EXPECT_TRUE(Write("2"));
    EXPECT_TRUE(std::filesystem::is_symlink(platform.SettingsFile()));
    EXPECT_EQ(ReadBytes(target), "[Hardware]\r\nK=2\r\n");
}

TEST_F(PosixProfileFileTest, A_folder_in_the_files_place_reads_as_no_file_and_cannot_be_written) {
    std::filesystem::create_directories(platform.SettingsFile() / "inside");
    EXPECT_EQ(Read(), "fallback");
    EXPECT_FALSE(Write("1"));
    EXPECT_TRUE(std::filesystem::is_directory(platform.SettingsFile()));
}

TEST_F(PosixProfileFileTest, A_missing_folder_makes_the_write_fail) {
    std::filesystem::remove_all(platform.places.ConfigurationFolder());
    EXPECT_FALSE(Write("1"));
}

std::string ManyKeys(int keys) {
    std::string file = "; kept\r\n[Kept]\r\nx=1\r\n[Hardware]\r\n";
    for (int key = 0; key < keys; ++key)
        file += "Key " + std::to_string(key) + "=" + std::string(100, 'x') + "\r\n";
    return file;
}

TEST_F(PosixProfileFileTest, A_file_is_whole_whenever_the_writing_process_is_killed) {
    const std::string common = ManyKeys(400);
    File(common + "K=0\r\n");
    std::mt19937 random(1); // the moments vary by themselves; the seed fixes their spread
    for (int round = 0; round < 40; ++round) {
        const std::string before = FileNow();
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int value = before[common.size() + 2] - '0' + 1;; ++value) {
                const bool written = Write(std::to_string(value % 10));
                if (::write(pipe[1], written ? "1" : "0", 1) != 1)
                    ::_exit(1);
            }
        }
        char firstWritten = '0';
        ASSERT_EQ(::read(pipe[0], &firstWritten, 1), 1);
        EXPECT_EQ(firstWritten, '1');
        ::usleep(static_cast<useconds_t>(random() % 10000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ::close(pipe[0]);
        ::close(pipe[1]);
        const std::string after = FileNow();
        ASSERT_EQ(after.size(), common.size() + 5);
        EXPECT_EQ(after.substr(0, common.size()), common);
        EXPECT_EQ(after.substr(common.size(), 2), "K=");
    }
}

TEST_F(PosixProfileFileTest,
       What_a_killed_process_left_beside_the_file_is_removed_by_a_later_write) {
    const std::string left = platform.SettingsFile().string() + ".new-Ab3dEf";
    WriteBytes(left, "half");
    const auto anHourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(left, anHourAgo);
    WriteBytes(platform.SettingsFile().string() + ".backup", "mine");
    EXPECT_TRUE(Write("1"));
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_TRUE(std::filesystem::exists(platform.SettingsFile().string() + ".backup"));
}

/// Limits the size of every file of this process, as a full disk would.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit before_{};
    void (*oldHandler_)(int) = nullptr;
};

TEST_F(PosixProfileFileTest, On_a_full_disk_the_old_file_is_whole_and_the_write_says_no) {
    const std::string before = ManyKeys(20) + "K=0\r\n";
    File(before);
    {
        const SmallDisk disk(1000);
        EXPECT_FALSE(Write("1"));
    }
    EXPECT_EQ(FileNow(), before);
    EXPECT_EQ(Read(), "0");
    const auto files = std::filesystem::directory_iterator(platform.places.ConfigurationFolder());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1); // no half file stays
    EXPECT_TRUE(Write("1"));
    EXPECT_EQ(Read(), "1");
}

/// Seconds of this process's own time that loading all settings takes, whatever else the machine
/// does meanwhile.
double LoadTime_s() {
    const std::clock_t start = std::clock();
    mWinInit::LoadSettings();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

class LargeSettingsFile : public PosixProfileFileTest,
                          public testing::WithParamInterface<damaged::Shape> {};

// How fast is a benchmark's matter. A reader whose work grows with the square of the size needs
// minutes for this file on any machine, a linear one a second where a build is slowest.
TEST_P(LargeSettingsFile, Is_read_to_its_end_without_harm_or_hang) {
    constexpr std::size_t bytes = 2000000;
    constexpr double hang_s = 30;
    File(damaged::File(GetParam(), bytes));
    EXPECT_LT(LoadTime_s(), hang_s);
    EXPECT_EQ(mWinInit::HardwareSettings.HardwarePortNumber, 7);
}

INSTANTIATE_TEST_SUITE_P(EachShape, LargeSettingsFile, testing::ValuesIn(damaged::shapes),
                         [](const auto& shape) {
                             std::string name = shape.param.name;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

TEST_F(PosixProfileFileTest, A_file_that_is_there_but_cannot_be_read_is_not_replaced) {
    const auto file = platform.SettingsFile();
    std::filesystem::create_symlink(file, file); // opening it fails for root, too
    EXPECT_EQ(Read(), "fallback");
    EXPECT_FALSE(Write("v"));
    EXPECT_TRUE(std::filesystem::is_symlink(file));
}

} // namespace
