#include "report/RunOverview.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"
#include "report/support/RandomRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

using Mreport::RecordSpan;
using Mreport::RunOverview;

const std::vector<Mreport::SeriesColumns> fourChannels = {{0}, {1}, {2}, {3}};
/// Channels 1 and 2 share a sensor, channel 3 has its own.
const std::vector<Mreport::SeriesColumns> twoSensors = {{0, 1}, {2}};

/// A run in memory with its overview, and the same read plainly.
struct OverviewOf {
    explicit OverviewOf(std::string bytes, std::size_t recordsPerPiece = 100)
        : text(std::move(bytes)), source(text), records(ReadPlainly(text)),
          pieces(PiecesOf(records, recordsPerPiece)) {}

    RecordSpan All() const { return {0, std::ssize(records)}; }

    void Start(Quantity quantity, std::vector<Mreport::SeriesColumns> series, RecordSpan span,
               std::int64_t from = 0) {
        overview.Start(source, pieces, {{quantity, false}, std::move(series), span, false, from});
        shown = quantity;
    }
    void Fill(std::uint64_t slice = 10'000) {
        while (overview.Step(slice)) {
        }
    }

    /// What the columns must be, from every value.
    std::vector<RunOverview::Column> Plainly(const Mreport::SeriesColumns& series, RecordSpan span,
                                             std::int64_t width) const {
        constexpr double largest = std::numeric_limits<float>::max();
        std::vector<RunOverview::Column> columns;
        const std::int64_t group = overview.RecordsPerGroup();
        const std::int64_t start = overview.Span().first;
        for (std::int64_t place = start; place < overview.Span().end; ++place) {
            const std::int64_t first = start + (place - start) / group * group;
            if (first + group <= span.first || first >= span.end)
                continue;
            const std::int64_t ahead = std::max(first - span.first, std::int64_t{0});
            const std::int64_t column = ahead * width / span.Count();
            if (columns.empty() || columns.back().column != column)
                columns.push_back({column, {}});
            if (const auto value = ValueAt(place, series))
                columns.back().range.Take(
                    static_cast<float>(std::clamp(*value, -largest, largest)));
        }
        return columns;
    }
    std::optional<double> ValueAt(std::int64_t place, const Mreport::SeriesColumns& series) const {
        for (const std::size_t column : series)
            if (const auto value = records[static_cast<std::size_t>(place)].Value(
                    Quantities::Label(shown), column))
                return value;
        return std::nullopt;
    }
    void ExpectAsPlain(const std::vector<Mreport::SeriesColumns>& series, RecordSpan span,
                       std::int64_t width) const {
        for (std::size_t s = 0; s < series.size(); ++s) {
            const auto columns = overview.Columns(s, span, width);
            const auto plain = Plainly(series[s], span, width);
            ASSERT_EQ(columns.size(), plain.size());
            for (std::size_t i = 0; i < plain.size(); ++i)
                ASSERT_EQ(columns[i], plain[i])
                    << "series " << s << ", column " << plain[i].column << ": "
                    << columns[i].range.low << ".." << columns[i].range.high << " for "
                    << plain[i].range.low << ".." << plain[i].range.high;
        }
    }

    std::string text;
    Mreport::MemorySource source;
    std::vector<PlainRecord> records;
    std::vector<Mreport::RunPiece> pieces;
    RunOverview overview;
    Quantity shown = Quantity::mV;
};

} // namespace

TEST(RunOverview, Each_column_of_pixels_has_the_smallest_and_the_largest_value_of_its_records) {
    OverviewOf run(MeasurementText().File(100)); // channel 1 has its record number
    run.Start(Quantity::mV, fourChannels, run.All());
    run.Fill();
    const auto columns = run.overview.Columns(0, run.All(), 10);
    ASSERT_EQ(columns.size(), 10U);
    EXPECT_EQ(columns[0], (RunOverview::Column{0, {1, 10}}));
    EXPECT_EQ(columns[9], (RunOverview::Column{9, {91, 100}}));
    EXPECT_EQ(run.overview.RangeOf(0, {20, 30}), (RunOverview::Range{21, 30}));
}

TEST(RunOverview, With_more_columns_than_records_each_record_has_its_own) {
    OverviewOf run(MeasurementText().File(4));
    run.Start(Quantity::mV, fourChannels, run.All());
    run.Fill();
    const auto columns = run.overview.Columns(0, run.All(), 100);
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[1], (RunOverview::Column{25, {2, 2}}));
}

TEST(RunOverview, A_column_whose_records_have_no_value_interrupts_the_line) {
    MeasurementText text;
    text.cell = [](int record, const std::string&, int) {
        return record > 40 && record <= 60 ? std::string("NA") : std::to_string(record);
    };
    OverviewOf run(text.File(100));
    run.Start(Quantity::mV, fourChannels, run.All());
    run.Fill();
    const auto columns = run.overview.Columns(0, run.All(), 10);
    ASSERT_EQ(columns.size(), 10U);
    for (std::size_t i = 0; i < columns.size(); ++i)
        EXPECT_EQ(columns[i].range.Any(), i != 4 && i != 5) << i;
}

TEST(RunOverview, A_run_without_records_has_no_columns) {
    OverviewOf run(MeasurementText().Header());
    run.Start(Quantity::mV, fourChannels, run.All());
    EXPECT_FALSE(run.overview.Step(1));
    EXPECT_TRUE(run.overview.Columns(0, run.All(), 100).empty());
    EXPECT_EQ(run.overview.Share(), 1);
}

TEST(RunOverview, It_is_filled_from_the_span_outward) {
    OverviewOf run(MeasurementText().File(1000));
    run.Start(Quantity::mV, fourChannels, run.All(), 550);
    std::vector<std::int64_t> order;
    run.overview.Observe([&order](std::int64_t place, const Mreport::FoundRecord&) {
        if (order.empty() || order.back() != place / 100)
            order.push_back(place / 100);
    });
    run.Fill();
    EXPECT_EQ(order, (std::vector<std::int64_t>{5, 6, 4, 7, 3, 8, 2, 9, 1, 0}));
}

TEST(RunOverview, A_slice_reads_no_more_than_a_record_beyond_its_bytes) {
    OverviewOf run(MeasurementText().File(1000));
    run.Start(Quantity::mV, fourChannels, run.All());
    std::int64_t read = 0;
    run.overview.Observe([&read](std::int64_t, const Mreport::FoundRecord&) { ++read; });
    const auto recordBytes = static_cast<std::int64_t>(MeasurementText().Record(1).size());
    for (int slice = 0; slice < 5; ++slice) {
        EXPECT_TRUE(run.overview.Step(static_cast<std::uint64_t>(10 * recordBytes)));
        EXPECT_LE(read, 11 * (slice + 1));
    }
    EXPECT_GE(read, 40);
    EXPECT_NEAR(run.overview.Share(), static_cast<double>(read) / 1000, 1e-9);
}

TEST(RunOverview, A_sensor_takes_the_first_channel_that_has_a_value) {
    MeasurementText text;
    text.cell = [](int record, const std::string&, int channel) {
        return channel == 0 && record == 2 ? std::string("NA") : std::to_string(channel + 1);
    };
    OverviewOf run(text.File(3));
    run.Start(Quantity::celsius, twoSensors, run.All());
    run.Fill();
    EXPECT_EQ(run.overview.At(0, 0), (RunOverview::Range{1, 1}));
    EXPECT_EQ(run.overview.At(1, 0), (RunOverview::Range{2, 2}));
    EXPECT_EQ(run.overview.At(2, 1), (RunOverview::Range{3, 3}));
}

TEST(RunOverview, The_first_comment_of_a_group_is_its_flag) {
    MeasurementText text;
    text.comment = [](int number) { return number == 7 || number == 9 ? "shaken" : ""; };
    OverviewOf run(text.File(20));
    run.Start(Quantity::mV, fourChannels, run.All(), 15);
    run.Fill();
    EXPECT_EQ(run.overview.At(6).comment, 6);
    EXPECT_EQ(run.overview.At(6).commentOffset, run.records[6].offset);
    EXPECT_EQ(run.overview.At(7).comment, -1);
}

TEST(RunOverview, A_long_run_is_kept_in_groups_that_do_not_grow_in_number) {
    constexpr int records = 20'000;
    OverviewOf run(MeasurementText().File(records), 4000);
    run.Start(Quantity::mV, fourChannels, run.All());
    run.Fill(100'000);
    EXPECT_EQ(run.overview.RecordsPerGroup(), 4);
    EXPECT_EQ(run.overview.GroupCount(), 5000U);
    EXPECT_EQ(run.overview.At(1).number, 5);
    run.ExpectAsPlain(fourChannels, run.All(), 777);
}

TEST(RunOverview, A_run_that_grows_is_followed_and_merged) {
    MeasurementText text;
    const std::string whole = text.File(9000);
    const std::string begun = text.File(3000);
    OverviewOf run(begun, 5000);
    run.overview.Start(run.source, run.pieces,
                       {{Quantity::mV, false}, fourChannels, run.All(), true, 0});
    run.Fill(100'000);
    EXPECT_EQ(run.overview.RecordsPerGroup(), 1);

    OverviewOf later(whole, 5000);
    run.source.Append(whole.substr(begun.size()));
    ASSERT_TRUE(run.overview.Grow(later.pieces));
    run.records = later.records;
    run.Fill(100'000);
    EXPECT_EQ(run.overview.RecordsPerGroup(), 2);
    EXPECT_EQ(run.overview.Share(), 1);
    run.ExpectAsPlain(fourChannels, later.All(), 500);
}

TEST(RunOverview, A_record_that_is_completed_later_is_counted_once) {
    MeasurementText text;
    const std::string whole = text.File(3);
    const std::string cut = whole.substr(0, whole.rfind("ppm"));
    OverviewOf run(cut);
    run.overview.Start(run.source, run.pieces,
                       {{Quantity::ppm, false}, fourChannels, run.All(), true, 0});
    run.Fill();
    EXPECT_FALSE(run.overview.At(2, 1).Any());

    run.source.Append(whole.substr(cut.size()));
    ASSERT_TRUE(run.overview.Grow(PiecesOf(ReadPlainly(whole), 100)));
    run.Fill();
    EXPECT_EQ(run.overview.At(2, 1), (RunOverview::Range{1.5F, 1.5F}));
    EXPECT_EQ(run.overview.At(2).records, 1);
    EXPECT_EQ(run.overview.Share(), 1);
}

TEST(RunOverview, Another_run_is_not_taken_for_one_that_has_grown) {
    OverviewOf run(MeasurementText().File(500));
    run.Start(Quantity::mV, fourChannels, run.All());
    EXPECT_FALSE(run.overview.Grow(OverviewOf(MeasurementText().File(100)).pieces));
    EXPECT_FALSE(run.overview.Grow(OverviewOf(MeasurementText().File(900), 90).pieces));
}

TEST(RunOverview, Random_files_look_as_when_every_value_is_looked_at) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomRun random(seed);
        std::string text = random.Text(20 + random.Below(400));
        if (random.Below(2) == 0)
            random.Damage(text, 1 + random.Below(10));
        OverviewOf run(text, 1 + random.Below(std::size_t{90}));
        const auto records = static_cast<int>(run.records.size());
        RecordSpan span{random.Below(records), 0};
        span.end = span.first + 1 + random.Below(records - static_cast<int>(span.first));
        const auto& series = random.Below(3) == 0 ? twoSensors : fourChannels;
        const Quantity quantity = Quantities::table[random.Below(quantityCount)].quantity;
        run.Start(quantity, series, random.Below(2) == 0 ? run.All() : span, random.Below(records));
        run.Fill(static_cast<std::uint64_t>(1 + random.Below(20'000)));
        EXPECT_EQ(run.overview.Share(), 1);
        run.ExpectAsPlain(series, span, 1 + random.Below(300));
    }
}
