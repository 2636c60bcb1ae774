#include "platform/System.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

class Ports : public testing::Test {
protected:
    std::string Device(int number) { return platform::DeviceOfPort(number, folder.Path()); }

    fake::TemporaryFolder folder;
};

TEST_F(Ports, Each_four_numbers_are_a_kind_of_device) {
    EXPECT_EQ(Device(1), "/dev/ttyS0");
    EXPECT_EQ(Device(4), "/dev/ttyS3");
    EXPECT_EQ(Device(5), "/dev/ttyUSB0");
    EXPECT_EQ(Device(8), "/dev/ttyUSB3");
    EXPECT_EQ(Device(9), "/dev/ttyACM0");
    EXPECT_EQ(Device(12), "/dev/ttyACM3");
    EXPECT_EQ(Device(13), "/dev/rfcomm0");
    EXPECT_EQ(Device(16), "/dev/rfcomm3");
}

TEST_F(Ports, A_number_outside_1_to_16_is_no_device) {
    EXPECT_EQ(Device(0), "");
    EXPECT_EQ(Device(17), "");
    EXPECT_EQ(Device(-1), "");
}

TEST_F(Ports, A_link_in_the_configuration_folder_stands_in_for_its_number) {
    std::filesystem::create_directories(folder.Path() / "ports");
    const auto link = folder.Path() / "ports" / "com5";
    std::filesystem::create_symlink(folder.Path() / "gone", link);
    EXPECT_EQ(Device(5), link.string()); // even while what it points to is missing
    EXPECT_EQ(Device(6), "/dev/ttyUSB1");
}

TEST(TemporaryFolder_, It_is_the_one_that_survives_a_restart) {
    EXPECT_EQ(platform::SystemTemporaryFolder(), "/var/tmp");
}

} // namespace
