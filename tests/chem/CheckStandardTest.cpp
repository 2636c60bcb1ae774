#include "chem/CheckStandard.h"

#include <gtest/gtest.h>

using CheckStandard::Bounds;
using CheckStandard::Check;

TEST(CheckStandard, The_recovery_is_the_reading_in_percent_of_the_standard_to_one_decimal) {
    EXPECT_FLOAT_EQ(Check(98.24F, 100, {})->recovery_percent, 98.2F);
    EXPECT_FLOAT_EQ(Check(7.0F, 7.0F, {})->recovery_percent, 100.0F);
    EXPECT_FLOAT_EQ(Check(-5.0F, 10.0F, {})->recovery_percent, -50.0F);
    EXPECT_FALSE(Check(5, 0, {}));
}

TEST(CheckStandard, The_bounds_themselves_pass) {
    const Bounds bounds{90, 110};
    EXPECT_TRUE(Check(90, 100, bounds)->passes);
    EXPECT_TRUE(Check(110, 100, bounds)->passes);
    EXPECT_FALSE(Check(89.9F, 100, bounds)->passes);
    EXPECT_FALSE(Check(110.1F, 100, bounds)->passes);
}

TEST(CheckStandard, The_text_tells_recovery_outcome_and_bounds) {
    const Bounds bounds{95, 105.5F};
    EXPECT_EQ(CheckStandard::Text(*Check(98.2F, 100, bounds), bounds),
              "Recovery 98.2 %: pass (95 to 105.5 %)");
    EXPECT_EQ(CheckStandard::Text(*Check(80, 100, bounds), bounds),
              "Recovery 80.0 %: fail (95 to 105.5 %)");
}

TEST(CheckStandard, A_channel_is_checked_in_what_it_is_calibrated_in) {
    EXPECT_EQ(CalibratedQuantity("H (pH)", 1), Quantity::pH);
    EXPECT_EQ(CalibratedQuantity("Ca", 0), Quantity::ppm);
    EXPECT_EQ(CalibratedQuantity("Ca", 1), Quantity::mol_l);
    EXPECT_EQ(CalibratedQuantity("Redox", 1), Quantity::mV);
}
