#include "files/DiskForecast.h"

#include "base/RunTimeError.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using FileOpr::ForecastRoom;
using FileOpr::RoomText;

class DiskForecastTest : public testing::Test {
protected:
    DiskForecastTest() {
        run.temporaryFile = platform.places.TemporaryFolder() / "4chA";
        run.target = platform.folder.Path() / "run.4ch";
        run.recordBytes = 500;
        run.period_s = 8;
    }
    double Hours() const { return ForecastRoom(run).hours; }

    fake::Platform platform;
    FileOpr::RunOnDisk run;
};

TEST_F(DiskForecastTest, On_two_disks_the_fuller_one_decides) {
    platform.files->otherDisk = platform.places.TemporaryFolder();
    platform.files->free_bytes = 1'800'000;              // 3600 records every 8 s: 8 hours
    platform.files->freeOnOtherDisk_bytes = 225'000'000; // 1000 hours
    EXPECT_DOUBLE_EQ(Hours(), 8);
    EXPECT_EQ(ForecastRoom(run).free_bytes, 1'800'000U);
    platform.files->freeOnOtherDisk_bytes = 225'000; // 450 records
    EXPECT_DOUBLE_EQ(Hours(), 1);
}

TEST_F(DiskForecastTest, On_one_disk_each_record_needs_its_room_twice) {
    platform.files->free_bytes = 1'800'000;
    EXPECT_DOUBLE_EQ(Hours(), 4);
}

TEST_F(DiskForecastTest, Records_that_wait_still_have_to_be_copied) {
    platform.files->free_bytes = 1'800'000;
    run.waitingBytes = 900'000;
    EXPECT_DOUBLE_EQ(Hours(), 2);
    run.waitingBytes = 2'000'000;
    EXPECT_DOUBLE_EQ(Hours(), 0);
}

TEST_F(DiskForecastTest, Records_that_go_straight_to_the_target_need_its_disk_alone) {
    platform.files->free_bytes = 1'800'000;
    platform.files->otherDisk = platform.places.TemporaryFolder();
    platform.files->freeOnOtherDisk_bytes = 0;
    run.direct = true;
    EXPECT_DOUBLE_EQ(Hours(), 8);
}

TEST_F(DiskForecastTest, A_record_comes_after_whole_seconds) {
    platform.files->free_bytes = 1'800'000;
    run.period_s = 1.5F; // records every 2 s
    EXPECT_DOUBLE_EQ(Hours(), 1);
}

TEST_F(DiskForecastTest, A_record_is_as_long_as_it_is_written) {
    SetUpRun();
    const auto rows = MeasurementFormat::RowsOf(std::span(mWinInit::ChannelSetup).first(4));
    // "Record 100000\tAt\thh:mm:ss dd.mmm.yyyy", "Comment:\t", five rows of 15 + 4 * 13, dashes;
    // CR LF behind each.
    EXPECT_EQ(FileOpr::RecordBytes(rows, 4), 39U + 11 + 5 * (15 + 4 * 13 + 2) + 152);
}

TEST_F(DiskForecastTest, Its_text_says_whole_hours) {
    EXPECT_EQ(RoomText(18.9), "room on the disk for 18 hours");
    EXPECT_EQ(RoomText(1.2), "room on the disk for 1 hour");
    EXPECT_EQ(RoomText(1), "room on the disk for 1 hour");
    EXPECT_EQ(RoomText(0.9), "room on the disk for less than an hour");
}

TEST_F(DiskForecastTest, The_tool_tip_has_the_path_and_the_free_space) {
    EXPECT_EQ(
        FileOpr::TargetToolTip("/data/spring-1.4ch", FileOpr::DiskForecast{18'340'000'000, 30}),
        "/data/spring-1.4ch\n18.3 GB free, room on the disk for 30 hours");
    EXPECT_EQ(FileOpr::TargetToolTip("/data/a.4ch", FileOpr::DiskForecast{512, 0}),
              "/data/a.4ch\n512 bytes free, room on the disk for less than an hour");
    EXPECT_EQ(FileOpr::TargetToolTip("/data/a.4ch", std::nullopt), "/data/a.4ch");
}

TEST_F(DiskForecastTest, The_free_space_has_the_unit_that_its_size_asks_for) {
    const auto freeSpace = [](std::uint64_t bytes) {
        const auto text = FileOpr::TargetToolTip("a", FileOpr::DiskForecast{bytes, 0});
        return text.substr(2, text.find(" free") - 2);
    };
    EXPECT_EQ(freeSpace(999), "999 bytes");
    EXPECT_EQ(freeSpace(1000), "1.0 kB");
    EXPECT_EQ(freeSpace(999'900), "999.9 kB");
    EXPECT_EQ(freeSpace(2'500'000), "2.5 MB");
    EXPECT_EQ(freeSpace(2'000'000'000'000), "2.0 TB");
    EXPECT_EQ(freeSpace(5'000'000'000'000'000'000), "5000000.0 TB");
}

TEST_F(DiskForecastTest, A_disk_that_cannot_be_asked_is_an_error) {
    platform.files->answersForRoom = false;
    EXPECT_THROW(ForecastRoom(run), RunTimeError);
}

TEST(RoomWatch, It_speaks_once_when_the_room_falls_below_a_day) {
    FileOpr::RoomWatch watch;
    EXPECT_EQ(watch.Add({0, 24}), "");
    EXPECT_EQ(watch.Add({0, 23.9}), "At this period there is room on the disk for 23 hours.");
    EXPECT_EQ(watch.Add({0, 12}), "");
    EXPECT_EQ(watch.Add({0, 100}), "");
    EXPECT_EQ(watch.Add({0, 2}), "At this period there is room on the disk for 2 hours.");
}

} // namespace
