#include "settings/StoredLimits.h"

#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using namespace mWinInit;

namespace {

class StoredLimits : public ::testing::Test {
protected:
    fake::Platform platform;

    Limits Stored(const std::string& line) {
        WriteBytes(platform.SettingsFile(), "[Limits]\r\nChannel 1=" + line + "\r\n");
        return LoadLimits()[0];
    }
};

} // namespace

TEST_F(StoredLimits, Without_the_section_no_channel_has_limits) {
    EXPECT_EQ(LoadLimits(), ChannelLimits());
}

TEST_F(StoredLimits, They_come_back_with_unit_and_open_ends) {
    ChannelLimits limits;
    limits[0] = {1.0F, 100.0F, Quantity::ppm};
    limits[1] = {6.5F, std::nullopt, Quantity::pH};
    limits[3] = {std::nullopt, 1.5E-4F, Quantity::mol_l};
    limits[7] = {-10.0F, 30.0F, Quantity::celsius};
    EXPECT_TRUE(SaveLimits(limits).empty());
    EXPECT_EQ(LoadLimits(), limits);
}

TEST_F(StoredLimits, An_open_end_is_open_on_either_side_of_zero) {
    EXPECT_EQ(Stored("mV,,-50"), (Limits{std::nullopt, -50.0F, Quantity::mV}));
    EXPECT_EQ(Stored("mV,50,"), (Limits{50.0F, std::nullopt, Quantity::mV}));
}

TEST_F(StoredLimits, Limits_taken_away_are_gone) {
    ChannelLimits limits;
    limits[2] = {0.0F, 1.0F, Quantity::mV};
    SaveLimits(limits);
    SaveLimits({});
    EXPECT_EQ(LoadLimits(), ChannelLimits());
}

TEST_F(StoredLimits, Without_any_the_settings_file_is_not_touched) {
    EXPECT_TRUE(SaveLimits({}).empty());
    EXPECT_FALSE(std::filesystem::exists(platform.SettingsFile()));
}

TEST_F(StoredLimits, A_line_that_is_no_pair_of_limits_sets_none) {
    EXPECT_EQ(Stored("ppm,1,100"), (Limits{1.0F, 100.0F, Quantity::ppm}));
    EXPECT_EQ(Stored("ppm,5,5"), (Limits{5.0F, 5.0F, Quantity::ppm})) << "one value alone";
    for (const char* line : {"ppm", "furlongs,1,100", "ppm,1,100,7", "ppm,1;5,100", "ppm,100,1",
                             "ppm,x,100", "ppm,1,x", ",,", "ppm,,", "1,2,3"})
        EXPECT_FALSE(Stored(line).AreSet()) << line;
}

TEST_F(StoredLimits, A_file_that_cannot_be_written_is_told) {
    std::filesystem::create_directories(platform.SettingsFile());
    ChannelLimits limits;
    limits[0].low = 1.0F;
    EXPECT_EQ(SaveLimits(limits).size(), 1U);
}
