#include "link/DataAcq.h"

#include "link/CommPort.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>
#include <utility>

namespace {

using DataAcq::ReadChannels;
using Averages = std::array<float, cyclePositions>;

class DataAcqTest : public testing::Test {
protected:
    void SetUp() override {
        platform.clock.step = std::chrono::milliseconds(1); // events run at every value
    }

    /// All readings that the instrument fills take one value.
    static void SetReadings(float value) {
        for (std::size_t slot = 0; slot < 8; ++slot)
            CommPort::Readings()[slot] = value;
    }

    static Averages Read() {
        Averages result{};
        ReadChannels(result);
        return result;
    }

    fake::Platform platform;
};

// ---- Channels and slots ------------------------------------------------------------------------

TEST_F(DataAcqTest, Electrodes_take_the_even_slots_and_temperature_sensors_the_odd_ones) {
    CommPort::Readings() = {10, 11, 20, 21, 30, 31, 40, 41, 0, 0, 0, 0};

    EXPECT_EQ(DataAcq::GetChannelValue(0), 10);
    EXPECT_EQ(DataAcq::GetChannelValue(1), 20);
    EXPECT_EQ(DataAcq::GetChannelValue(2), 30);
    EXPECT_EQ(DataAcq::GetChannelValue(3), 40);
    EXPECT_EQ(DataAcq::GetChannelValue(8), 11);
    EXPECT_EQ(DataAcq::GetChannelValue(9), 21);
    EXPECT_EQ(DataAcq::GetChannelValue(10), 31);
    EXPECT_EQ(DataAcq::GetChannelValue(11), 41);
}

TEST_F(DataAcqTest, Channels_4_to_7_always_read_0) {
    CommPort::Readings().fill(99);

    for (std::int16_t channel = 4; channel <= 7; ++channel)
        EXPECT_EQ(DataAcq::GetChannelValue(channel), 0) << channel;
}

TEST_F(DataAcqTest, Taking_a_value_sets_the_connection_state_and_lets_events_run) {
    ASSERT_EQ(DataAcq::Reader().ConnectionState, 0);

    DataAcq::GetChannelValue(4);

    EXPECT_EQ(DataAcq::Reader().ConnectionState, 1);
    EXPECT_EQ(platform.desktop.eventPasses, 1);
}

TEST_F(DataAcqTest, A_frame_that_arrives_while_events_run_counts_for_this_value) {
    platform.desktop.onEvents = [] { CommPort::Readings()[0] = 55; };

    EXPECT_EQ(DataAcq::GetChannelValue(0), 55);
}

// ---- Averages
// ------------------------------------------------------------------------------------

TEST_F(DataAcqTest, With_an_averaging_number_of_1_every_call_returns_the_raw_values) {
    DataAcq::StartSeries(1);
    for (const float value : {1.5F, -20.25F, 300.0F}) {
        SetReadings(value);
        EXPECT_EQ(Read(),
                  (Averages{value, value, value, value, 0, 0, 0, 0, value, value, value, value}));
    }
}

TEST_F(DataAcqTest, With_3_the_first_call_takes_three_readings_and_the_next_three_replace_them) {
    DataAcq::StartSeries(3);
    SetReadings(3);
    EXPECT_EQ(Read()[0], 3.0F); // 3 3 3
    EXPECT_TRUE(DataAcq::Reader().AveragePrimed);
    EXPECT_EQ(DataAcq::Reader().AveragePos, 0);

    SetReadings(6);
    EXPECT_EQ(Read()[0], 4.0F); // 6 3 3
    EXPECT_EQ(DataAcq::Reader().AveragePos, 1);
    SetReadings(9);
    EXPECT_EQ(Read()[0], 6.0F); // 6 9 3
    EXPECT_EQ(DataAcq::Reader().AveragePos, 2);
    SetReadings(12);
    EXPECT_EQ(Read()[0], 9.0F); // 6 9 12
    EXPECT_EQ(DataAcq::Reader().AveragePos, 0);

    SetReadings(0);
    EXPECT_EQ(Read()[0], 7.0F); // 0 9 12
}

TEST_F(DataAcqTest, The_first_call_takes_N_readings_of_all_twelve_positions) {
    DataAcq::StartSeries(5);

    Read();

    EXPECT_EQ(platform.desktop.eventPasses, 5 * cyclePositions);
}

TEST_F(DataAcqTest, Every_later_call_takes_one_reading_of_all_twelve_positions) {
    DataAcq::StartSeries(5);
    Read();
    platform.desktop.eventPasses = 0;

    Read();

    EXPECT_EQ(platform.desktop.eventPasses, cyclePositions);
}

TEST_F(DataAcqTest, Frames_that_arrive_during_the_first_call_count_in_its_rows) {
    DataAcq::StartSeries(2);
    SetReadings(10);
    platform.desktop.onEvents = [this] {
        if (platform.desktop.eventPasses > cyclePositions)
            SetReadings(20);
    };

    EXPECT_EQ(Read()[0], 15.0F);
}

TEST_F(DataAcqTest, A_new_series_starts_from_fresh_readings) {
    DataAcq::StartSeries(3);
    SetReadings(100);
    Read();

    DataAcq::StartSeries(2);
    SetReadings(1);

    EXPECT_EQ(Read()[0], 1.0F);
}

TEST_F(DataAcqTest, A_series_may_be_started_by_setting_its_state_one_by_one) {
    DataAcq::Reader().AverageCount = 2;
    DataAcq::Reader().AveragePrimed = false;
    DataAcq::Reader().ReadingEnabled = true;
    SetReadings(4);
    Read();
    SetReadings(8);

    EXPECT_EQ(Read()[0], 6.0F);
}

TEST_F(DataAcqTest, An_averaging_number_below_1_counts_as_1) {
    DataAcq::StartSeries(0);
    SetReadings(4);
    EXPECT_EQ(Read()[0], 4.0F);
    DataAcq::StartSeries(-7);
    EXPECT_EQ(Read()[0], 4.0F);
    DataAcq::Reader().AverageCount = 0;
    EXPECT_EQ(Read()[0], 4.0F);
}

TEST_F(DataAcqTest, A_shorter_series_begins_with_its_first_row_wherever_the_longer_one_stood) {
    DataAcq::StartSeries(3);
    for (int i = 0; i < 3; ++i)
        Read();
    ASSERT_EQ(DataAcq::Reader().AveragePos, 2);

    DataAcq::StartSeries(2);
    SetReadings(10);
    Read();

    EXPECT_EQ(DataAcq::Reader().AveragePos, 0);
    SetReadings(20);
    EXPECT_EQ(Read()[0], 15.0F);
    EXPECT_EQ(Read()[0], 20.0F);
}

TEST_F(DataAcqTest, An_averaging_number_changed_by_itself_is_no_number_for_the_old_readings) {
    DataAcq::StartSeries(2);
    SetReadings(10);
    Read();
    DataAcq::Reader().AverageCount = 4;
    SetReadings(20);

    EXPECT_EQ(Read()[0], 20.0F);
    SetReadings(40);
    EXPECT_EQ(Read()[0], 25.0F); // 40 20 20 20
}

/// Tenths as a frame carries them.
float FromTenths(int tenths) {
    return static_cast<float>(tenths / 10.0);
}

TEST_F(DataAcqTest, A_reading_of_0_is_shown_as_0_after_any_other_readings) {
    for (const int count : {1, 2, 3, 10}) {
        DataAcq::StartSeries(count);
        for (const int tenths : {9999, -4567, 123, 1, 7458}) {
            SetReadings(FromTenths(tenths));
            Read();
        }
        SetReadings(0);
        for (int i = 1; i < count; ++i)
            Read();
        EXPECT_EQ(Read()[0], 0.0F) << count;
    }
}

TEST_F(DataAcqTest, Whatever_came_before_N_equal_readings_give_that_reading_bit_for_bit) {
    constexpr unsigned seed = 20030307;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> anyTenths(-9999, 9999);
    for (const int count : {1, 2, 7, 60, 1000}) {
        DataAcq::StartSeries(count);
        for (int i = 0; i < 3000; ++i) {
            SetReadings(FromTenths(anyTenths(random)));
            Read();
        }
        const float steady = FromTenths(anyTenths(random));
        SetReadings(steady);
        for (int i = 1; i < count; ++i)
            Read();
        const auto averages = Read();
        EXPECT_EQ(std::bit_cast<std::uint32_t>(averages[0]), std::bit_cast<std::uint32_t>(steady))
            << "averaging " << count << ", seed " << seed;
    }
}

// ---- Abandoning a pass
// ---------------------------------------------------------------------------

TEST_F(DataAcqTest, A_read_that_is_not_enabled_touches_nothing) {
    DataAcq::StartSeries(2);
    DataAcq::Reader().ReadingEnabled = false;
    Averages result;
    result.fill(-1);

    ReadChannels(result);

    EXPECT_FALSE(DataAcq::Reader().AveragePrimed);
    EXPECT_EQ(std::count(result.begin(), result.end(), -1.0F), cyclePositions);
    EXPECT_EQ(platform.desktop.eventPasses, 0);
}

TEST_F(DataAcqTest, Stopping_in_the_middle_of_a_later_call_leaves_the_rest_untouched) {
    DataAcq::StartSeries(2);
    SetReadings(10);
    Read();
    SetReadings(20);
    int passes = 0;
    platform.desktop.onEvents = [&passes] {
        if (++passes == 2) // while the value of channel 1 is taken
            DataAcq::Reader().ReadingEnabled = false;
    };
    Averages result;
    result.fill(-1);

    ReadChannels(result);

    EXPECT_EQ(result[0], 15.0F);
    EXPECT_EQ(result[1], 15.0F);
    EXPECT_EQ(result[2], -1.0F);
    EXPECT_EQ(result[11], -1.0F);
    EXPECT_EQ(DataAcq::Reader().AveragePos, 0);
}

TEST_F(DataAcqTest, Stopping_in_the_middle_of_the_first_call_leaves_the_series_unprimed) {
    DataAcq::StartSeries(2);
    platform.desktop.onEvents = [this] {
        if (platform.desktop.eventPasses == cyclePositions + 3)
            DataAcq::Reader().ReadingEnabled = false;
    };
    Averages result;
    result.fill(-1);

    ReadChannels(result);

    EXPECT_FALSE(DataAcq::Reader().AveragePrimed);
    EXPECT_EQ(result[0], -1.0F);
    EXPECT_EQ(platform.desktop.eventPasses, cyclePositions + 3);
}

TEST_F(DataAcqTest, A_series_that_begins_during_a_later_pass_ends_that_without_a_result) {
    DataAcq::StartSeries(2);
    SetReadings(10);
    Read();
    platform.desktop.onEvents = [begun = false]() mutable {
        if (!std::exchange(begun, true))
            DataAcq::StartSeries(5);
    };
    Averages result;
    result.fill(-1);

    ReadChannels(result);

    EXPECT_EQ(std::count(result.begin(), result.end(), -1.0F), cyclePositions);
}

TEST_F(DataAcqTest, A_series_that_begins_during_a_pass_is_not_disturbed_by_it) {
    DataAcq::StartSeries(1000);
    SetReadings(10);
    Averages inner{};
    bool begun = false;
    platform.desktop.onEvents = [&] {
        if (begun || platform.desktop.eventPasses < 30)
            return;
        begun = true;
        DataAcq::StartSeries(2);
        ReadChannels(inner);
    };
    Averages outer;
    outer.fill(-1);

    ReadChannels(outer);

    EXPECT_EQ(inner[0], 10.0F);
    EXPECT_EQ(outer[0], -1.0F);
    SetReadings(20);
    EXPECT_EQ(Read()[0], 15.0F);
}

// ---- Numbers of the entry boxes
// --------------------------------------------------------------------

TEST_F(DataAcqTest, A_whole_number_is_read_and_tells_so) {
    std::int16_t value = 7;

    EXPECT_TRUE(DataAcq::TryGetInteger(value, " 25 "));
    EXPECT_EQ(value, 25);
}

TEST_F(DataAcqTest, A_text_that_is_no_integer_leaves_the_value_and_tells_so) {
    std::int16_t value = 7;
    for (const auto* text : {"", " ", "abc", "12a", "0,5", "32768", "-32769"}) {
        EXPECT_FALSE(DataAcq::TryGetInteger(value, text)) << text;
        EXPECT_EQ(value, 7);
    }
}

TEST_F(DataAcqTest, A_single_is_read_with_sign_point_and_exponent) {
    float value = 7;
    EXPECT_TRUE(DataAcq::TryGetSingle(value, "-1.5E-3"));
    EXPECT_EQ(value, -1.5E-3F);
}

TEST_F(DataAcqTest, A_text_that_is_no_single_leaves_the_value_and_tells_so) {
    float value = 7;
    for (const auto* text : {"", "x", "1.2.3", "0,5", "1E", "1 2"}) {
        EXPECT_FALSE(DataAcq::TryGetSingle(value, text)) << text;
        EXPECT_EQ(value, 7);
    }
}

} // namespace
