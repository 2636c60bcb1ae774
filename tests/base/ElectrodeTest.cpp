#include "base/Electrode.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Electrode::Kind;

TEST(Electrode, The_kind_follows_from_the_name) {
    EXPECT_EQ(Electrode::KindOf("Redox"), Kind::redox);
    EXPECT_EQ(Electrode::KindOf("Pt Redox 2"), Kind::redox);
    EXPECT_EQ(Electrode::KindOf("H (pH)"), Kind::pH);
    EXPECT_EQ(Electrode::KindOf("Glass (pH 0-14)"), Kind::pH);
    EXPECT_EQ(Electrode::KindOf("None"), Kind::none);
    EXPECT_EQ(Electrode::KindOf(""), Kind::none);
    EXPECT_EQ(Electrode::KindOf("NO3"), Kind::ion);
}

TEST(Electrode, The_kind_looks_at_the_exact_letters) {
    EXPECT_EQ(Electrode::KindOf("redox"), Kind::ion);
    EXPECT_EQ(Electrode::KindOf("pH"), Kind::ion);
    EXPECT_EQ(Electrode::KindOf("H"), Kind::ion);
    EXPECT_EQ(Electrode::KindOf("None "), Kind::ion);
}

TEST(Electrode, The_named_positions_are_those_of_the_list) {
    EXPECT_EQ(Electrode::types[25].name, Electrode::redoxName);
    EXPECT_EQ(Electrode::types[Electrode::noneIndex].name, Electrode::noneName);
    EXPECT_EQ(Electrode::noneIndex, 26);
    EXPECT_EQ(Electrode::types[24].name, Electrode::pHName);
}

// Sums of the standard atomic weights of 2021, worked out by hand to a thousandth.
TEST(Electrode, The_molar_mass_of_an_ion_is_the_sum_of_its_atoms) {
    constexpr float thousandth = 0.0005F;
    EXPECT_NEAR(Electrode::MolarMass("Ca"), 40.078F, thousandth);
    EXPECT_NEAR(Electrode::MolarMass("NO3"), 62.004F, thousandth);
    EXPECT_NEAR(Electrode::MolarMass("NH4"), 18.039F, thousandth);
    EXPECT_NEAR(Electrode::MolarMass("ClO4"), 99.446F, thousandth);
    EXPECT_NEAR(Electrode::MolarMass("SCN"), 58.078F, thousandth);
    EXPECT_NEAR(Electrode::MolarMass("CO3"), 60.008F, thousandth);
}

TEST(Electrode, Every_ion_of_the_list_has_a_molar_mass_and_no_other_entry_has) {
    for (const auto& type : Electrode::types)
        EXPECT_EQ(Electrode::MolarMass(type.name) > 0, Electrode::KindOf(type.name) == Kind::ion)
            << type.name;
    EXPECT_EQ(Electrode::MolarMass("Xy"), 0);
}

TEST(Electrode, The_charge_carries_its_sign) {
    EXPECT_EQ(Electrode::Charge("Ca"), 2);
    EXPECT_EQ(Electrode::Charge("Cl"), -1);
    EXPECT_EQ(Electrode::Charge("CO3"), -2);
    EXPECT_EQ(Electrode::Charge("H (pH)"), 1);
    EXPECT_EQ(Electrode::Charge("NH3"), 0);
    EXPECT_EQ(Electrode::Charge("Redox"), 0);
    EXPECT_EQ(Electrode::Charge("Xy"), 0);
}

} // namespace
