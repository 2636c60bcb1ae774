#include "chem/LimitWatch.h"

#include <gtest/gtest.h>

namespace {

using State = LimitWatch::State;

/// Channel 2 (from 0) between 1 and 100 ppm; each reading comes a second after the one before.
class LimitWatchTest : public ::testing::Test {
protected:
    static constexpr std::size_t channel = 2;

    LimitWatchTest() { watch.Watch(Between(1, 100)); }

    static ChannelLimits Between(float low, float high) {
        ChannelLimits limits;
        limits[channel] = {low, high, Quantity::ppm};
        return limits;
    }
    bool Read(std::optional<float> ppm) {
        ChannelDisplay::Values values;
        values[Quantity::mV] = 500; // no limits in this unit
        values[Quantity::ppm] = ppm;
        ++now.second;
        return watch.Add(channel, values, now);
    }
    bool ReadThrice(float ppm) {
        const bool first = Read(ppm);
        const bool second = Read(ppm);
        return (Read(ppm) || second) || first;
    }

    LimitWatch watch;
    LocalTime now{2003, 3, 7, 14, 54, 0};
};

} // namespace

TEST_F(LimitWatchTest, The_third_reading_outside_in_a_row_gives_the_alarm_once) {
    EXPECT_FALSE(Read(101));
    EXPECT_FALSE(Read(0.5F));
    EXPECT_EQ(watch.StateOf(channel), State::inside);
    EXPECT_TRUE(Read(101));
    EXPECT_EQ(watch.StateOf(channel), State::alarm);
    EXPECT_FALSE(Read(101));
    EXPECT_EQ(watch.Text(channel), "outside its limits (1 to 100 ppm) since 14:54:01");
}

TEST_F(LimitWatchTest, A_reading_inside_ends_the_row) {
    Read(101);
    Read(101);
    Read(100);
    EXPECT_FALSE(Read(101));
    EXPECT_FALSE(Read(101));
    EXPECT_TRUE(Read(101));
}

TEST_F(LimitWatchTest, The_limits_themselves_are_inside) {
    EXPECT_FALSE(ReadThrice(1));
    EXPECT_FALSE(ReadThrice(100));
}

TEST_F(LimitWatchTest, A_reading_without_a_value_neither_counts_nor_ends_a_row) {
    Read(101);
    Read(101);
    EXPECT_FALSE(Read(std::nullopt));
    EXPECT_TRUE(Read(101));
}

TEST_F(LimitWatchTest, An_alarm_stands_until_acknowledged_and_tells_when_it_was) {
    ReadThrice(101);
    Read(50);
    Read(60);
    EXPECT_EQ(watch.StateOf(channel), State::alarm);
    EXPECT_EQ(watch.Text(channel),
              "was outside its limits (1 to 100 ppm) from 14:54:01 to 14:54:04");
    watch.Acknowledge(channel);
    EXPECT_EQ(watch.StateOf(channel), State::inside);
    EXPECT_EQ(watch.Text(channel), "");
}

TEST_F(LimitWatchTest, An_alarm_whose_value_is_outside_again_has_not_ended) {
    ReadThrice(101);
    Read(50);
    Read(101);
    EXPECT_EQ(watch.Text(channel), "outside its limits (1 to 100 ppm) since 14:54:01");
}

TEST_F(LimitWatchTest, An_acknowledged_alarm_ends_with_the_first_reading_inside) {
    ReadThrice(101);
    watch.Acknowledge(channel);
    EXPECT_EQ(watch.StateOf(channel), State::acknowledged);
    EXPECT_FALSE(ReadThrice(101));
    EXPECT_EQ(watch.Text(channel), "outside its limits (1 to 100 ppm) since 14:54:01");
    Read(50);
    EXPECT_EQ(watch.StateOf(channel), State::inside);
    EXPECT_TRUE(ReadThrice(101)) << "the next alarm sounds again";
}

TEST_F(LimitWatchTest, The_alarm_after_one_that_had_ended_has_not_ended_itself) {
    ReadThrice(101);
    Read(50);
    watch.Acknowledge(channel);
    EXPECT_FALSE(Read(101)) << "of three in a row this is the first";
    EXPECT_FALSE(Read(101));
    EXPECT_TRUE(Read(101));
    EXPECT_EQ(watch.Text(channel), "outside its limits (1 to 100 ppm) since 14:54:05");
}

TEST_F(LimitWatchTest, Without_limits_nothing_is_outside) {
    watch.Watch({});
    EXPECT_FALSE(ReadThrice(1E30F));
    watch.Acknowledge(channel);
    EXPECT_EQ(watch.StateOf(channel), State::inside);
}

TEST_F(LimitWatchTest, New_limits_start_anew_and_unchanged_ones_do_not) {
    ReadThrice(101);
    watch.Watch(Between(1, 100));
    EXPECT_EQ(watch.StateOf(channel), State::alarm);
    watch.Watch(Between(1, 200));
    EXPECT_EQ(watch.StateOf(channel), State::inside);
}

TEST_F(LimitWatchTest, The_first_channel_is_watched_like_the_last) {
    ChannelLimits limits;
    limits.front().high = limits.back().high = 10.0F;
    watch.Watch(limits);
    ChannelDisplay::Values values;
    values[Quantity::mV] = 11;
    const std::size_t ends[] = {0, limits.size() - 1};
    for (const std::size_t end : ends) {
        watch.Add(end, values, now);
        watch.Add(end, values, now);
        EXPECT_TRUE(watch.Add(end, values, now)) << end;
    }
}

TEST(Limits, Either_end_may_be_open) {
    const Limits low{1.5F, std::nullopt, Quantity::pH};
    EXPECT_TRUE(low.Hold(1E30F) && !low.Hold(1.4F));
    EXPECT_EQ(LimitsText(low), "from 1.5 pH");
    const Limits high{std::nullopt, 30.0F, Quantity::celsius};
    EXPECT_TRUE(high.Hold(-273) && !high.Hold(30.1F));
    EXPECT_EQ(LimitsText(high), "up to 30 \xB0"
                                "C");
    EXPECT_EQ(LimitsText({}), "");
    EXPECT_FALSE(Limits().AreSet());
}
