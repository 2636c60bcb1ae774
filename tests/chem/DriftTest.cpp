#include "chem/Drift.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;
using NumberText::Pattern;

namespace {

/// Adds `count` readings, one each `interval`, on a straight line.
Drift Line(int count, std::chrono::milliseconds interval, float first, float perMinute) {
    Drift drift;
    for (int i = 0; i < count; ++i) {
        const auto now = 1h + i * interval;
        const float minutes = static_cast<float>((i * interval).count()) / 60000;
        drift.Add(first + perMinute * minutes, now);
    }
    return drift;
}

} // namespace

TEST(Drift, A_straight_line_gives_its_slope_per_minute) {
    EXPECT_NEAR(*Line(10, 1500ms, 100, 1.2F).PerMinute(), 1.2F, 1E-3F);
    EXPECT_NEAR(*Line(10, 1500ms, -553.2F, -30).PerMinute(), -30, 1E-2F);
    EXPECT_FLOAT_EQ(*Line(10, 1500ms, 7.01F, 0).PerMinute(), 0);
}

TEST(Drift, Rounded_readings_around_a_line_give_nearly_its_slope) {
    Drift drift;
    for (int i = 0; i < 10; ++i) // 2 mV a minute, as the instrument rounds them
        drift.Add(std::round((50 + 0.05F * static_cast<float>(i)) * 10) / 10, i * 1500ms);
    // Ten readings on a grid of 0.1 mV over 13.5 s tell a slope to about a tenth of a mV a minute.
    EXPECT_NEAR(*drift.PerMinute(), 2.0F, 0.15F);
}

TEST(Drift, Nothing_is_told_before_the_readings_span_five_seconds) {
    Drift drift;
    EXPECT_FALSE(drift.PerMinute());
    drift.Add(10, 0ms);
    EXPECT_FALSE(drift.PerMinute());
    drift.Add(11, 4999ms);
    EXPECT_FALSE(drift.PerMinute());
    drift.Add(12, 5000ms);
    EXPECT_TRUE(drift.PerMinute());
}

TEST(Drift, Readings_of_one_instant_tell_nothing) {
    EXPECT_FALSE(Line(10, 0ms, 1, 0).PerMinute());
}

TEST(Drift, Only_the_last_ten_readings_count) {
    Drift drift = Line(30, 1500ms, 0, 600);
    for (int i = 0; i < 10; ++i)
        drift.Add(450, 2h + i * 1500ms);
    EXPECT_FLOAT_EQ(*drift.PerMinute(), 0);
}

TEST(Drift, A_wider_window_looks_at_as_many_readings) {
    Drift drift(28);
    for (int i = 0; i < 28; ++i) // steep, then level: the last ten alone would tell nothing of it
        drift.Add(i < 18 ? static_cast<float>(i) : 18, i * 500ms);
    EXPECT_GT(*drift.PerMinute(), 50);
}

TEST(Drift, A_new_start_forgets_all_readings) {
    Drift drift = Line(10, 1500ms, 0, 1);
    drift.Start();
    EXPECT_FALSE(drift.PerMinute());
    drift.Add(1, 3h);
    EXPECT_FALSE(drift.PerMinute());
}

TEST(Drift, Its_text_has_a_sign_and_the_unit_per_minute) {
    EXPECT_EQ(DriftText(1.25F, "mV", Pattern::oneDecimal), "+1.3 mV/min");
    EXPECT_EQ(DriftText(0.8F, "mV", Pattern::oneDecimal), "+0.8 mV/min");
    EXPECT_EQ(DriftText(-0.8F, "mV", Pattern::oneDecimal), "-0.8 mV/min");
    EXPECT_EQ(DriftText(-0.02F, "pH", Pattern::twoDecimals), "-0.02 pH/min");
}

TEST(Drift, A_drift_that_rounds_to_nothing_has_no_sign) {
    EXPECT_EQ(DriftText(0.04F, "mV", Pattern::oneDecimal), "0.0 mV/min");
    EXPECT_EQ(DriftText(-0.04F, "mV", Pattern::oneDecimal), "0.0 mV/min");
}
