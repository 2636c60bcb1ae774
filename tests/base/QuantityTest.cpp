#include "base/Quantity.h"

#include <gtest/gtest.h>

namespace {

using Electrode::Kind;

TEST(Quantity, The_rows_stand_in_the_order_of_the_units_codes) {
    for (std::size_t i = 0; i < Quantities::table.size(); ++i)
        EXPECT_EQ(static_cast<std::size_t>(Quantities::table[i].quantity), i);
}

TEST(Quantity, A_label_is_found_letter_by_letter) {
    EXPECT_EQ(Quantities::Label(Quantity::celsius), "\xB0"
                                                    "C");
    EXPECT_EQ(Quantities::WithLabel("mol/l"), Quantity::mol_l);
    EXPECT_EQ(Quantities::WithLabel("mol/L"), std::nullopt);
    EXPECT_EQ(Quantities::WithLabel(""), std::nullopt);
}

TEST(Quantity, Each_kind_of_electrode_gives_its_own_quantities) {
    for (const Kind kind : {Kind::none, Kind::redox, Kind::pH, Kind::ion})
        EXPECT_TRUE(Quantities::Gives(kind, Quantity::mV));
    EXPECT_TRUE(Quantities::Gives(Kind::pH, Quantity::pH));
    EXPECT_FALSE(Quantities::Gives(Kind::redox, Quantity::pH));
    EXPECT_TRUE(Quantities::Gives(Kind::ion, Quantity::ppm));
    EXPECT_TRUE(Quantities::Gives(Kind::ion, Quantity::mol_l));
    EXPECT_FALSE(Quantities::Gives(Kind::pH, Quantity::ppm));
}

TEST(Quantity, Degrees_are_the_sensors_alone) {
    EXPECT_TRUE(Quantities::IsOfSensors(Quantity::celsius));
    EXPECT_FALSE(Quantities::IsOfSensors(Quantity::mV));
    EXPECT_FALSE(Quantities::Gives(Kind::ion, Quantity::celsius));
}

TEST(Quantity, The_noise_of_a_steady_reading_does_not_fill_an_axis) {
    EXPECT_EQ(Quantities::LeastRangeAt(Quantity::mV, -180), 2);
    EXPECT_EQ(Quantities::LeastRangeAt(Quantity::pH, 7), 0.1);
    EXPECT_EQ(Quantities::LeastRangeAt(Quantity::celsius, 25), 1);
    EXPECT_DOUBLE_EQ(Quantities::LeastRangeAt(Quantity::ppm, 40), 2); // a twentieth
    EXPECT_DOUBLE_EQ(Quantities::LeastRangeAt(Quantity::mol_l, -1e-3), 5e-5);
}

} // namespace
