#include "report/RunCurve.h"

#include "report/RunCursors.h"
#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using Mreport::CurvePoint;
using Mreport::RunAxis;

/// Records a second apart from 14:00:00 on, or as `second` tells; channel 1 has its record number.
struct TimedRun {
    explicit TimedRun(int records, const std::function<int(int record)>& second = nullptr) {
        MeasurementText maker;
        maker.cell = [](int record, const std::string&, int channel) {
            return missing.contains(record) ? std::string("NA")
                                            : std::to_string(record * (channel + 1));
        };
        for (int number = 1; number <= records; ++number) {
            const int at = second ? second(number) : number - 1;
            std::string record = maker.Record(number);
            const auto two = [](int part) {
                return std::string(part < 10 ? "0" : "") + std::to_string(part);
            };
            record.replace(record.find("14:05:33"), 8,
                           two(14 + at / 3600) + ":" + two(at / 60 % 60) + ":" + two(at % 60));
            text += record;
        }
        source = Mreport::MemorySource(text);
        const auto read = ReadPlainly(text);
        all = {0, std::ssize(read)};
        run.Start(source, PiecesOf(read, 100), {{Quantity::mV, false}, {{0}, {1}}, all, false, 0});
        while (run.Step(100'000)) {
        }
    }
    std::vector<CurvePoint> Curve(RunAxis axis, int width, std::size_t series = 0) const {
        return CurveOf(run, series, all, axis, width);
    }

    static inline std::set<int> missing;
    std::string text;
    Mreport::MemorySource source{std::string()};
    Mreport::RecordSpan all;
    Mreport::RunOverview run;
};

class RunCurve : public testing::Test {
protected:
    void TearDown() override { TimedRun::missing.clear(); }
};

std::size_t Interruptions(const std::vector<CurvePoint>& curve) {
    std::size_t count = 0;
    for (const CurvePoint& point : curve)
        count += point.range.Any() ? 0 : 1;
    return count;
}

} // namespace

TEST_F(RunCurve, By_record_a_point_lies_at_its_record_number) {
    const auto curve = TimedRun(3).Curve(RunAxis::record, 300, 1);
    ASSERT_EQ(curve.size(), 3U);
    EXPECT_EQ(curve[1], (CurvePoint{2, {4, 4}}));
}

TEST_F(RunCurve, A_column_of_many_records_has_one_point_with_their_range) {
    const auto curve = TimedRun(1000).Curve(RunAxis::record, 10);
    ASSERT_GE(curve.size(), 10U);
    ASSERT_LE(curve.size(), 11U);
    EXPECT_EQ(curve[0].range.low, 1);
    EXPECT_NEAR(curve[0].range.high, 100, 1);
}

TEST_F(RunCurve, By_time_a_point_lies_at_its_second) {
    const auto curve = TimedRun(3, [](int record) { return record * 4; }).Curve(RunAxis::time, 300);
    ASSERT_EQ(curve.size(), 3U);
    EXPECT_EQ(curve[1].x - curve[0].x, 4);
}

TEST_F(RunCurve, By_time_a_real_gap_interrupts_the_line) {
    const auto paused = [](int record) { return record <= 20 ? record : record + 3600; };
    const TimedRun run(40, paused);
    EXPECT_EQ(Interruptions(run.Curve(RunAxis::time, 500)), 1U);
    EXPECT_EQ(Interruptions(run.Curve(RunAxis::record, 500)), 0U);
}

TEST_F(RunCurve, A_slow_recording_is_no_gap) {
    const auto curve =
        TimedRun(20, [](int record) { return record * 60; }).Curve(RunAxis::time, 500);
    EXPECT_EQ(Interruptions(curve), 0U);
    EXPECT_EQ(curve.size(), 20U);
}

TEST_F(RunCurve, Records_without_a_value_interrupt_the_line) {
    TimedRun::missing = {5, 6};
    const auto curve = TimedRun(10).Curve(RunAxis::record, 1000);
    ASSERT_EQ(curve.size(), 10U);
    EXPECT_EQ(Interruptions(curve), 2U);
}

TEST_F(RunCurve, The_extent_reaches_from_the_first_to_the_last_record) {
    const TimedRun run(30);
    EXPECT_EQ(ExtentOf(run.run, run.all, RunAxis::record).begin, 1);
    EXPECT_EQ(ExtentOf(run.run, run.all, RunAxis::record).end, 30);
    const auto time = ExtentOf(run.run, run.all, RunAxis::time);
    EXPECT_EQ(time.end - time.begin, 29);
}

TEST_F(RunCurve, Two_cursors_tell_difference_and_rate_of_each_series) {
    const TimedRun run(30);
    EXPECT_EQ(Mreport::CursorText(run.run, {"Ch. 1", "Ch. 2"}, Quantity::mV, 9, 19),
              "Records 10 to 20, 0:00:10: Ch. 1 +10.0 mV, +3600.0 mV/h; Ch. 2 +20.0 mV, "
              "+7200.0 mV/h");
}

TEST_F(RunCurve, A_cursor_at_a_missing_value_leaves_its_series_out) {
    TimedRun::missing = {20};
    const TimedRun run(30);
    EXPECT_EQ(Mreport::CursorText(run.run, {"Ch. 1", "Ch. 2"}, Quantity::mV, 19, 9),
              "Records 20 to 10, -0:00:10");
}
