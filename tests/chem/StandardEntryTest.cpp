#include "chem/StandardEntry.h"
#include "base/RunTimeError.h"

#include <gtest/gtest.h>

using StandardEntry::Converted;

namespace {
constexpr float calcium_g_per_mol = 40.078F;
}

TEST(StandardEntry, Any_unit_number_but_0_means_mol_per_litre) {
    EXPECT_EQ(UnitOf(0.0F), StandardUnit::ppm);
    EXPECT_EQ(UnitOf(1.0F), StandardUnit::mol_per_litre);
    EXPECT_EQ(UnitOf(2.0F), StandardUnit::mol_per_litre);
}

TEST(StandardEntry, Ppm_become_mol_per_litre_by_the_molar_mass) {
    // 400.78 mg/l / (40.078 g/mol * 1000 mg/g) = 0.01 mol/l
    EXPECT_EQ(Converted("400.78", StandardUnit::mol_per_litre, calcium_g_per_mol), "1.00E-02");
}

TEST(StandardEntry, Mol_per_litre_become_ppm_by_the_molar_mass) {
    EXPECT_EQ(Converted("0.01", StandardUnit::ppm, calcium_g_per_mol), "400.8");
    // 1 mol/l is 40078 ppm, beyond the fixed range
    EXPECT_EQ(Converted("1", StandardUnit::ppm, calcium_g_per_mol), "4.01E+04");
}

TEST(StandardEntry, There_and_back_again_differs_by_the_display_alone) {
    const std::string there = Converted("10.0", StandardUnit::mol_per_litre, calcium_g_per_mol);
    EXPECT_EQ(there, "2.50E-04"); // 2.4951E-04
    EXPECT_EQ(Converted(there, StandardUnit::ppm, calcium_g_per_mol), "10.0");
}

TEST(StandardEntry, Values_from_a_tenth_on_keep_the_plain_form) {
    EXPECT_EQ(Converted("4007.8", StandardUnit::mol_per_litre, calcium_g_per_mol), "0.1");
    EXPECT_EQ(Converted("2003.9", StandardUnit::mol_per_litre, calcium_g_per_mol), "5.00E-02");
}

TEST(StandardEntry, Empty_fields_prompts_and_what_is_no_number_stay_as_they_are) {
    for (const char* text : {"", "  ", "< Type ppm here >", "< Type mol/l here >", "ten", "0,5"})
        EXPECT_EQ(Converted(text, StandardUnit::mol_per_litre, calcium_g_per_mol), text);
}

TEST(StandardEntry, A_field_is_blank_until_something_is_typed) {
    for (const char* text : {"", " \t", "< Type ppm here >", " < Type mol/l here >"})
        EXPECT_TRUE(StandardEntry::IsBlank(text)) << text;
    for (const char* text : {"10", "ten", "<"})
        EXPECT_FALSE(StandardEntry::IsBlank(text)) << text;
}

TEST(StandardEntry, Without_a_molar_mass_a_standard_cannot_become_mol_per_litre) {
    EXPECT_THROW(Converted("10", StandardUnit::mol_per_litre, 0), RunTimeError);
}
