#include "report/SpanStatistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace std::chrono_literals;
using Mreport::SpanStatistics;

const Mreport::RecordTime start = std::chrono::local_days(2003y / 3 / 7) + 14h;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(SpanStatistics, Mean_deviation_smallest_and_largest_are_those_of_the_values) {
    SpanStatistics statistics(1);
    for (const double value : {2.0, 4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0})
        statistics.Take(0, value, std::nullopt);
    const auto result = statistics.Of(0);
    EXPECT_EQ(result.count, 8);
    EXPECT_DOUBLE_EQ(result.mean, 5);
    EXPECT_DOUBLE_EQ(*result.deviation,
                     std::sqrt(32.0 / 7)); // squares of the differences add to 32
    EXPECT_EQ(result.smallest, 2);
    EXPECT_EQ(result.largest, 9);
    EXPECT_FALSE(result.drift_per_hour) << "no record has a time";
}

TEST(SpanStatistics, The_drift_is_the_slope_over_real_time) {
    SpanStatistics statistics(1);
    statistics.Take(0, 100, start);
    statistics.Take(0, 101, start + 30min);
    statistics.Take(0, 104, start + 2h); // on one line with the others
    EXPECT_NEAR(*statistics.Of(0).drift_per_hour, 2, 1e-12);
}

TEST(SpanStatistics, A_missing_value_counts_for_nothing) {
    SpanStatistics statistics(2);
    statistics.Take(0, 1, start);
    statistics.Take(0, noValue, start + 1s);
    statistics.Take(1, noValue, start);
    EXPECT_EQ(statistics.Of(0).count, 1);
    EXPECT_EQ(statistics.Of(1).count, 0);
    EXPECT_EQ(statistics.Of(1).mean, 0);
}

TEST(SpanStatistics, One_value_has_neither_deviation_nor_drift) {
    SpanStatistics statistics(1);
    statistics.Take(0, 1, start);
    EXPECT_FALSE(statistics.Of(0).deviation);
    EXPECT_FALSE(statistics.Of(0).drift_per_hour);
    statistics.Take(0, 2, start); // at the same moment
    EXPECT_TRUE(statistics.Of(0).deviation);
    EXPECT_FALSE(statistics.Of(0).drift_per_hour);
}

TEST(SpanStatistics, A_small_deviation_of_large_values_keeps_its_digits) {
    SpanStatistics statistics(1);
    for (int i = 0; i < 604'800; ++i)
        statistics.Take(0, 9'999'999 + (i % 2 == 0 ? 0.1 : -0.1), start + std::chrono::seconds(i));
    EXPECT_NEAR(*statistics.Of(0).deviation, 0.1, 1e-6);
    EXPECT_NEAR(*statistics.Of(0).drift_per_hour, 0, 1e-6);
}

TEST(SpanStatistics, The_order_of_the_records_does_not_count) {
    SpanStatistics forward(1);
    SpanStatistics backward(1);
    for (int i = 0; i < 100; ++i) {
        forward.Take(0, i * i, start + std::chrono::seconds(i));
        const int j = 99 - i;
        backward.Take(0, j * j, start + std::chrono::seconds(j));
    }
    EXPECT_NEAR(*forward.Of(0).drift_per_hour, *backward.Of(0).drift_per_hour, 1e-6);
    EXPECT_NEAR(*forward.Of(0).deviation, *backward.Of(0).deviation, 1e-9);
}

TEST(SpanStatistics, The_table_writes_the_digits_that_tell_something) {
    const auto texts = Mreport::StatisticsTexts({3, 12.3456789, 12.1, 12.5, 0.123456, -0.00123456});
    EXPECT_EQ(texts,
              (std::vector<std::string>{"3", "12.3457", "0.123", "12.1", "12.5", "-0.00123"}));
    EXPECT_EQ(Mreport::StatisticsHeading("mV").back(), "Drift, mV/h");
    EXPECT_EQ(Mreport::StatisticsTexts({}), (std::vector<std::string>{"0", "", "", "", "", ""}));
}
