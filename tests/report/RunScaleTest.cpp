#include "report/RunScale.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Mreport::RunScale;

/// A run of one channel with these values.
struct RunOf {
    explicit RunOf(const std::vector<std::string>& values) {
        MeasurementText maker;
        maker.cell = [&values](int record, const std::string&, int) {
            return values[static_cast<std::size_t>(record) - 1];
        };
        for (int number = 1; number <= std::ssize(values); ++number)
            text += maker.Record(number);
        source = Mreport::MemorySource(text);
        const auto read = ReadPlainly(text);
        run.Start(source, PiecesOf(read, 100),
                  {{Quantity::mV, false}, {{0}}, {0, std::ssize(read)}, false, 0});
        while (run.Step(100'000)) {
        }
    }
    RunScale Scale(bool log) const {
        RunScale scale(log);
        scale.Take(run, 0, run.Span());
        return scale;
    }

    std::string text;
    Mreport::MemorySource source{std::string()};
    Mreport::RunOverview run;
};

TEST(RunScale, A_linear_scale_reaches_from_the_smallest_to_the_largest_value) {
    const RunScale scale = RunOf({"10", "-30", "20"}).Scale(false);
    EXPECT_EQ(scale.Low(), -30);
    EXPECT_EQ(scale.High(), 20);
    EXPECT_EQ(scale.ShareOf(-30), 0);
    EXPECT_EQ(scale.ShareOf(-5), 0.5);
    EXPECT_EQ(scale.ShareOf(20), 1);
}

TEST(RunScale, A_logarithmic_scale_has_equal_room_for_every_decade) {
    const RunScale scale = RunOf({"1", "100", "10"}).Scale(true);
    EXPECT_DOUBLE_EQ(scale.ShareOf(10), 0.5);
    EXPECT_EQ(scale.ShareOf(1), 0);
    EXPECT_EQ(scale.ShareOf(100), 1);
}

TEST(RunScale, A_logarithmic_scale_has_no_place_for_what_is_not_above_zero) {
    const RunScale scale = RunOf({"0", "-5", "2", "8"}).Scale(true);
    EXPECT_EQ(scale.Low(), 2);
    EXPECT_TRUE(std::isnan(scale.ShareOf(0)));
    EXPECT_TRUE(std::isnan(scale.ShareOf(-5)));
    EXPECT_FALSE(RunOf({"0", "-5"}).Scale(true).Any());
}

TEST(RunScale, A_value_alone_lies_in_the_middle) {
    EXPECT_EQ(RunOf({"7", "7"}).Scale(false).ShareOf(7), 0.5);
    EXPECT_FALSE(RunOf({"NA", "NA"}).Scale(false).Any());
}

} // namespace
