#include "chem/TrendHistory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace std::chrono_literals;

namespace {

using std::chrono::milliseconds;
using Points = std::vector<TrendHistory::Point>;

TrendHistory::Reading Potential(float value) {
    TrendHistory::Reading reading;
    reading[0][Quantity::mV] = value;
    return reading;
}

Points Line(const TrendHistory& history, milliseconds from, milliseconds to,
            std::size_t columns = 1000) {
    return history.Reduced(0, Quantity::mV, {from, to, columns});
}

std::vector<float> ValuesOf(const Points& points) {
    std::vector<float> values;
    for (const auto& point : points)
        values.push_back(point.value);
    return values;
}

/// Four readings a second, counted from 0.
TrendHistory FourASecond(int readings) {
    TrendHistory history;
    for (int i = 0; i < readings; ++i)
        history.Add(i * 250ms, Potential(static_cast<float>(i)));
    return history;
}

} // namespace

TEST(TrendHistory, It_gives_back_the_readings_of_a_window_and_the_one_before_it) {
    TrendHistory history;
    for (int i = 0; i < 10; ++i)
        history.Add(i * 1s, Potential(static_cast<float>(i)));
    EXPECT_EQ(ValuesOf(Line(history, 3s, 6s)), (std::vector<float>{2, 3, 4, 5, 6}));
    EXPECT_EQ(Line(history, 3s, 6s)[1].time, 3s);
    for (int i = 1; i < 10; ++i)
        EXPECT_EQ(Line(history, i * 1s, 9s).front().value, static_cast<float>(i - 1));
    EXPECT_TRUE(Line(TrendHistory(), 0s, 10s).empty());
}

TEST(TrendHistory, A_channel_without_values_has_no_line) {
    TrendHistory history;
    history.Add(0s, Potential(1));
    EXPECT_TRUE(history.Holds(0, Quantity::mV));
    EXPECT_FALSE(history.Holds(0, Quantity::pH));
    EXPECT_FALSE(history.Holds(1, Quantity::mV));
    EXPECT_TRUE(history.Reduced(1, Quantity::mV, {0s, 1s, 10}).empty());
}

TEST(TrendHistory, A_missing_value_parts_the_line) {
    TrendHistory history;
    history.Add(0s, Potential(1));
    history.Add(1s, {});
    history.Add(2s, {});
    history.Add(3s, Potential(4));
    const auto line = Line(history, 0s, 3s);
    ASSERT_EQ(line.size(), 3U);
    EXPECT_TRUE(std::isnan(line[1].value));
    EXPECT_EQ(line[2].value, 4);
}

TEST(TrendHistory, Readings_that_ended_and_began_again_are_not_joined) {
    TrendHistory history;
    history.Break(); // before the first reading: nothing to part
    history.Add(0s, Potential(1));
    history.Break();
    history.Add(60s, Potential(2));
    history.Add(61s, Potential(3));
    const auto line = Line(history, 0s, 61s);
    ASSERT_EQ(line.size(), 4U);
    EXPECT_TRUE(std::isnan(line[1].value));
}

TEST(TrendHistory, A_value_that_is_no_finite_number_is_none) {
    TrendHistory history;
    history.Add(0s, Potential(INFINITY));
    history.Add(1s, Potential(NAN));
    EXPECT_FALSE(history.Holds(0, Quantity::mV));
}

TEST(TrendHistory, Readings_faster_than_four_a_second_are_left_out) {
    TrendHistory history;
    for (int i = 0; i <= 100; ++i)
        history.Add(i * 10ms, Potential(static_cast<float>(i)));
    EXPECT_EQ(ValuesOf(Line(history, 0s, 1s)), (std::vector<float>{0, 25, 50, 75, 100}));
}

TEST(TrendHistory, After_days_it_holds_the_last_hour_in_at_most_4_MiB) {
    TrendHistory history;
    constexpr int readings = 3 * 24 * 3600 * 2; // three days, two a second
    for (int i = 0; i < readings; ++i)
        history.Add(i * 500ms, Potential(static_cast<float>(i)));
    const auto end = (readings - 1) * 500ms;
    const auto hour = Line(history, end - 60min, end, 100'000);
    EXPECT_EQ(hour.back().value, static_cast<float>(readings - 1));
    EXPECT_LE(hour.front().time, end - 60min);
    EXPECT_LE(TrendHistory::MostBytes(), 4U << 20U);
}

TEST(TrendHistory, After_more_than_an_hour_each_reading_of_the_last_one_is_left_in_its_order) {
    constexpr int hour = 4 * 3600;
    const auto history = FourASecond(hour + 600);
    const auto line = Line(history, 0s, (hour + 600) * 250ms, 1'000'000);
    ASSERT_EQ(line.size(), std::size_t{hour});
    for (std::size_t i = 0; i < line.size(); ++i)
        ASSERT_EQ(line[i].value, static_cast<float>(i + 600));
    EXPECT_EQ(ValuesOf(Line(history, 1000s, 1001s)),
              (std::vector<float>{3999, 4000, 4001, 4002, 4003, 4004}));
}

TEST(TrendHistory, Cleared_after_more_than_an_hour_it_draws_what_comes_in_its_order) {
    auto history = FourASecond(15'000);
    history.Clear();
    for (int i = 1; i <= 3; ++i)
        history.Add(i * 1s, Potential(static_cast<float>(i)));
    EXPECT_EQ(ValuesOf(Line(history, 0s, 4s)), (std::vector<float>{1, 2, 3}));
}

TEST(TrendHistory, A_line_whose_last_value_is_missing_ends_there) {
    TrendHistory history;
    history.Add(0s, Potential(1));
    history.Add(1s, Potential(2));
    history.Add(2s, {});
    const auto line = Line(history, 0s, 3s);
    ASSERT_EQ(line.size(), 3U);
    EXPECT_TRUE(std::isnan(line[2].value));
}

TEST(TrendHistory, Cleared_it_is_empty_and_takes_readings_of_any_time) {
    TrendHistory history;
    history.Add(100s, Potential(1));
    history.Clear();
    EXPECT_FALSE(history.Holds(0, Quantity::mV));
    history.Add(10s, Potential(2));
    EXPECT_EQ(ValuesOf(Line(history, 0s, 20s)), std::vector<float>{2});
}

TEST(TrendHistory, The_reduced_line_keeps_what_each_column_shows) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-50, 50);
    TrendHistory history;
    std::vector<float> all;
    for (int i = 0; i < 7200; ++i) {
        all.push_back(noise(random));
        history.Add(i * 500ms, Potential(all.back()));
    }
    constexpr std::size_t columns = 300;
    const auto line = Line(history, 0s, 3600s, columns);
    EXPECT_LE(line.size(), 4 * (columns + 1));
    EXPECT_TRUE(std::ranges::is_sorted(line, {}, &TrendHistory::Point::time));
    for (std::size_t column = 0; column < columns; ++column) {
        const auto from = static_cast<std::ptrdiff_t>(column * 24); // 12 s at two a second
        const auto [low, high] = std::minmax_element(all.begin() + from, all.begin() + from + 24);
        const auto begin = static_cast<int>(column) * 12s;
        std::vector<float> drawn;
        for (const auto& point : line)
            if (point.time >= begin && point.time < begin + 12s)
                drawn.push_back(point.value);
        ASSERT_FALSE(drawn.empty());
        EXPECT_EQ(*std::ranges::min_element(drawn), *low) << column;
        EXPECT_EQ(*std::ranges::max_element(drawn), *high) << column;
        EXPECT_EQ(drawn.front(), all[column * 24]);
        EXPECT_EQ(drawn.back(), all[column * 24 + 23]);
    }
}
