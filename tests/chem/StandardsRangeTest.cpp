#include "chem/StandardsRange.h"

#include <gtest/gtest.h>

namespace {

using Electrode::Kind;

CalibrationRecord Calibrated(std::initializer_list<float> standards, float unit) {
    CalibrationRecord record;
    record.PointCount = static_cast<std::int16_t>(standards.size());
    record.StdUnit = unit;
    std::copy(standards.begin(), standards.end(), record.Standard.begin());
    return record;
}

ChannelDisplay::Values With(Quantity quantity, float value) {
    ChannelDisplay::Values values;
    values[quantity] = value;
    return values;
}

const CalibrationRecord ppmRecord = Calibrated({100, 1, 10}, 0);

} // namespace

TEST(StandardsRange, It_spans_the_lowest_and_the_highest_standard_in_their_unit) {
    EXPECT_EQ(StandardsOf(ppmRecord, Kind::ion), (StandardsRange{1, 100, Quantity::ppm}));
    EXPECT_EQ(StandardsOf(Calibrated({0.001F, 0.1F}, 1), Kind::ion),
              (StandardsRange{0.001F, 0.1F, Quantity::mol_l}));
    EXPECT_EQ(StandardsOf(Calibrated({10, 4, 7}, 0), Kind::pH),
              (StandardsRange{4, 10, Quantity::pH}));
}

TEST(StandardsRange, A_channel_that_is_not_converted_has_none) {
    EXPECT_FALSE(StandardsOf(ppmRecord, Kind::redox));
    EXPECT_FALSE(StandardsOf(ppmRecord, Kind::none));
    EXPECT_FALSE(StandardsOf(CalibrationRecord(), Kind::ion));
    EXPECT_FALSE(StandardsOf(Calibrated({10}, 0), Kind::ion));
}

TEST(StandardsRange, Stored_entries_behind_the_points_do_not_widen_it) {
    auto record = Calibrated({1, 10}, 0);
    record.Standard[2] = 1000;
    EXPECT_EQ(StandardsOf(record, Kind::ion)->high, 10);
}

TEST(StandardsRange, A_value_is_outside_when_its_shown_number_is) {
    const auto range = *StandardsOf(ppmRecord, Kind::ion);
    EXPECT_FALSE(IsOutside(range, With(Quantity::ppm, 100)));
    EXPECT_FALSE(IsOutside(range, With(Quantity::ppm, 100.04F))); // shown as 100.0
    EXPECT_TRUE(IsOutside(range, With(Quantity::ppm, 100.06F)));
    EXPECT_FALSE(IsOutside(range, With(Quantity::ppm, 0.96F))); // shown as 1.0
    EXPECT_TRUE(IsOutside(range, With(Quantity::ppm, 0.94F)));
    EXPECT_FALSE(IsOutside(range, With(Quantity::ppm, 50)));
}

TEST(StandardsRange, The_value_counts_in_the_unit_of_the_standards) {
    const auto range = *StandardsOf(Calibrated({4, 7}, 0), Kind::pH);
    EXPECT_TRUE(IsOutside(range, With(Quantity::pH, 7.01F)));
    EXPECT_FALSE(IsOutside(range, With(Quantity::pH, 7.004F))); // shown as 7.00
    EXPECT_FALSE(IsOutside(range, With(Quantity::mV, 500)));
}

TEST(StandardsRange, Its_text_names_the_range_and_the_unit) {
    EXPECT_EQ(OutsideText({1, 100, Quantity::ppm}), "outside its standards (1 to 100 ppm)");
    EXPECT_EQ(OutsideText({0.0001F, 0.1F, Quantity::mol_l}),
              "outside its standards (0.0001 to 0.1 mol/l)");
    EXPECT_EQ(OutsideText({4.01F, 10, Quantity::pH}), "outside its standards (4.01 to 10 pH)");
}
