#include "platform/System.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <windows.h>

namespace {

TEST(Ports, A_device_name_reaches_numbers_above_9_too) {
    EXPECT_EQ(platform::DeviceOfPort(1, {}), R"(\\.\COM1)");
    EXPECT_EQ(platform::DeviceOfPort(16, {}), R"(\\.\COM16)");
}

TEST(Ports, A_number_outside_1_to_16_is_no_device) {
    EXPECT_EQ(platform::DeviceOfPort(0, {}), "");
    EXPECT_EQ(platform::DeviceOfPort(17, {}), "");
}

TEST(TemporaryFolder_, It_is_a_folder_of_the_systems) {
    EXPECT_TRUE(std::filesystem::is_directory(platform::SystemTemporaryFolder()));
}

class UserStoreTest : public testing::Test {
protected:
    ~UserStoreTest() override {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Vantrel\\Store test");
    }
    std::string Get(const std::string& key) {
        return store->GetSetting("Store test", "Startup", key, "fallback");
    }

    std::unique_ptr<platform::UserStore> store = platform::MakeUserStore();
};

TEST_F(UserStoreTest, A_missing_value_gives_the_fallback) {
    EXPECT_EQ(Get("PortNumber"), "fallback");
}

TEST_F(UserStoreTest, A_saved_value_comes_back_and_a_newer_one_takes_its_place) {
    store->SaveSetting("Store test", "Startup", "PortNumber", "5");
    EXPECT_EQ(Get("PortNumber"), "5");
    store->SaveSetting("Store test", "Startup", "PortNumber", "\xE9 \x80");
    EXPECT_EQ(Get("PortNumber"), "\xE9 \x80");
    store->SaveSetting("Store test", "Startup", "PortNumber", "");
    EXPECT_EQ(Get("PortNumber"), "");
}

TEST_F(UserStoreTest, Another_store_of_the_same_user_sees_the_value) {
    store->SaveSetting("Store test", "Startup", "BitRate", "9600");
    EXPECT_EQ(platform::MakeUserStore()->GetSetting("Store test", "Startup", "BitRate", ""),
              "9600");
}

} // namespace
