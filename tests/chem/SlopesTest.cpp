#include "base/RunTimeError.h"
#include "chem/Measure.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class Slopes : public testing::Test {
protected:
    void SetUp() override { Measure::Reset(); }
    void TearDown() override { Measure::Reset(); }

    static CalibrationRecord Record(std::initializer_list<std::array<float, 2>> standardAndMv) {
        CalibrationRecord record;
        for (const auto& [standard, mV] : standardAndMv) {
            const std::size_t point = record.Points();
            ++record.PointCount;
            record.Standard[point] = standard;
            record.CaliData[point] = mV;
        }
        return record;
    }

    static std::string ErrorOf(CalibrationRecord& record) {
        try {
            Measure::ComputeSlopes(record);
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return "no error";
    }
};

TEST_F(Slopes, Two_pH_buffers_give_millivolts_per_pH_as_displayed) {
    Measure::IsPHMode = true;
    auto record = Record({{4.00F, 177.5F}, {7.00F, 0.0F}});
    Measure::ComputeSlopes(record);
    EXPECT_EQ(record.Slope[0], -59.2F); // -59.1666...
}

TEST_F(Slopes, Two_concentrations_a_decade_apart_give_millivolts_per_decade) {
    auto record = Record({{1, 100}, {10, 159}});
    Measure::ComputeSlopes(record);
    EXPECT_EQ(record.Slope[0], 59.0F);
    record.StdUnit = 1; // mol/l
    Measure::ComputeSlopes(record);
    EXPECT_EQ(record.Slope[0], 59.0F);
}

TEST_F(Slopes, Six_points_give_five_slopes) {
    auto record = Record({{1, 0}, {10, 10}, {100, 30}, {1000, 60}, {1E4F, 100}, {1E5F, 150}});
    Measure::ComputeSlopes(record);
    EXPECT_EQ(record.Slope, (std::array<float, 5>{10, 20, 30, 40, 50}));
}

TEST_F(Slopes, A_slope_is_stored_as_it_is_displayed) {
    Measure::IsPHMode = true;
    auto record = Record({{0, 0}, {1, 12345.0F}, {2, 12345.004F}, {3, 12345.004F}});
    Measure::ComputeSlopes(record);
    EXPECT_EQ(record.Slope[0], 12300.0F); // 1.23E+04
    EXPECT_EQ(record.Slope[1], 0.00391F); // 12345.00390625 - 12345, below 0.01
    EXPECT_EQ(record.Slope[2], 0.0F);     // 0.0
    auto limits = Record({{0, 0}, {1, 0.01F}, {2, 9999.91F}});
    Measure::ComputeSlopes(limits);
    EXPECT_EQ(limits.Slope[0], 0.0F); // 0.01 is displayed as 0.0
    EXPECT_EQ(limits.Slope[1], 9999.9F);
}

TEST_F(Slopes, Equal_standards_are_a_division_by_zero_and_the_slopes_before_stay) {
    auto record = Record({{1, 100}, {10, 159}, {10, 200}, {100, 250}});
    EXPECT_EQ(ErrorOf(record), "Division by zero");
    EXPECT_EQ(record.Slope, (std::array<float, 5>{59.0F, 0, 0, 0, 0}));
    Measure::IsPHMode = true;
    auto buffers = Record({{7, 0}, {7, 10}});
    EXPECT_EQ(ErrorOf(buffers), "Division by zero");
}

TEST_F(Slopes, A_standard_of_zero_has_no_logarithm) {
    auto record = Record({{0, 100}, {10, 159}});
    EXPECT_EQ(ErrorOf(record), "Logarithm of a number that is not above 0");
    Measure::IsPHMode = true; // a pH of 0 is a standard like another
    EXPECT_EQ(ErrorOf(record), "no error");
    EXPECT_EQ(record.Slope[0], 5.9F);
}

TEST_F(Slopes, A_slope_beyond_single_precision_is_an_overflow) {
    Measure::IsPHMode = true;
    const float largest = std::numeric_limits<float>::max();
    auto record = Record({{0, -largest}, {1, largest}});
    EXPECT_EQ(ErrorOf(record), "Overflow");
}

TEST_F(Slopes, None_or_one_point_has_no_slope) {
    CalibrationRecord none;
    none.Slope.fill(7);
    EXPECT_EQ(ErrorOf(none), "no error");
    EXPECT_EQ(none.Slope[0], 7.0F);
    auto one = Record({{1, 100}});
    EXPECT_EQ(ErrorOf(one), "no error");
    EXPECT_EQ(one.Slope[0], 0.0F);
}

TEST_F(Slopes, Restored_slopes_are_those_of_the_calibration_and_zero_where_there_is_none) {
    Measure::IsPHMode = true; // not asked: the record's own kind counts
    auto record = Record({{1, 100}, {10, 159}, {10, 200}, {100, 250}});
    record.Slope.fill(7);
    Measure::RestoreSlopes(record, false);
    EXPECT_EQ(record.Slope, (std::array<float, 5>{59.0F, 0, 50.0F, 0, 0}));
    record.PointCount = 99; // as a damaged settings line may claim
    Measure::RestoreSlopes(record, false);
    EXPECT_EQ(record.Slope[0], 59.0F);
    record.PointCount = -1;
    Measure::RestoreSlopes(record, false);
    EXPECT_EQ(record.Slope, (std::array<float, 5>{}));
}

TEST(StandardUnits, A_typed_standard_changes_its_unit_by_the_molar_mass) {
    EXPECT_FLOAT_EQ(Measure::ToMolPerLitre(40.078F, 40.078F), 0.001F);
    EXPECT_FLOAT_EQ(Measure::ToPpm(0.001F, 40.078F), 40.078F);
    EXPECT_FLOAT_EQ(Measure::ToPpm(Measure::ToMolPerLitre(123.4F, 62.004F), 62.004F), 123.4F);
}

TEST(StandardUnits, Without_a_molar_mass_ppm_cannot_become_mol_per_litre) {
    try {
        Measure::ToMolPerLitre(10, 0);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_STREQ(error.what(), "Division by zero");
    }
}

TEST(StandardUnits, A_value_beyond_single_precision_is_an_overflow) {
    EXPECT_THROW(Measure::ToPpm(1E38F, 40), RunTimeError);
}

} // namespace
