#include "chem/ChannelDisplay.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using ChannelDisplay::ChannelState;
using Electrode::Kind;
using Texts = PerQuantity<std::string>;

Texts TextsOf(const ChannelState& channel) {
    Texts texts;
    const auto cells = ChannelDisplay::Compose(channel);
    for (const auto& row : Quantities::table) {
        const ChannelDisplay::Cell& cell = cells[row.quantity];
        texts[row.quantity] = cell.text;
        EXPECT_EQ(cell.error, cell.text == "Error") << row.label;
    }
    return texts;
}

ChannelState Ion(float converted, float stdUnit) {
    ChannelState channel;
    channel.kind = Kind::ion;
    channel.potential_mV = 188.5F;
    channel.converted = converted;
    channel.stdUnit = stdUnit;
    channel.molarMass_g_per_mol = 40.078F;
    return channel;
}

TEST(ChannelValues, A_conversion_that_failed_or_is_negative_leaves_the_potential_alone) {
    auto failed = Ion(5, 0);
    failed.conversionFailed = true;
    auto negative = Ion(-5, 0);
    auto none = Ion(5, 0);
    none.converted.reset();
    for (const auto& channel : {failed, negative, none}) {
        const auto values = ChannelDisplay::ValuesOf(channel);
        EXPECT_EQ(values[Quantity::mV], 188.5F);
        EXPECT_FALSE(values[Quantity::ppm]);
        EXPECT_FALSE(values[Quantity::mol_l]);
    }
}

TEST(ChannelValues, A_value_of_zero_is_a_value) {
    EXPECT_EQ(ChannelDisplay::ValuesOf(Ion(0, 0))[Quantity::ppm], 0.0F);
    EXPECT_EQ(TextsOf(Ion(0, 0))[Quantity::ppm], "0.0");
}

TEST(ChannelDisplay, A_Redox_channel_shows_its_potential_alone) {
    ChannelState channel;
    channel.kind = Kind::redox;
    channel.potential_mV = -412.04F;
    channel.converted = 1.0F;
    EXPECT_EQ(TextsOf(channel), (Texts{"-412.0", "", "", "", ""}));
}

TEST(ChannelDisplay, A_negative_value_of_a_Redox_channel_stands_in_the_pH_cell) {
    ChannelState channel;
    channel.kind = Kind::redox;
    channel.converted = -1.0F;
    EXPECT_EQ(TextsOf(channel), (Texts{"0.0", "-1.00", "", "", ""}));
}

TEST(ChannelDisplay, A_pH_channel_shows_potential_and_pH_with_two_decimals) {
    ChannelState channel;
    channel.kind = Kind::pH;
    channel.potential_mV = 59.0F;
    channel.converted = 6.0028F;
    EXPECT_EQ(TextsOf(channel), (Texts{"59.0", "6.00", "", "", ""}));
}

TEST(ChannelDisplay, A_pH_of_exactly_one_is_no_Redox_marker) {
    ChannelState channel;
    channel.kind = Kind::pH;
    channel.converted = 1.0F;
    EXPECT_EQ(TextsOf(channel)[Quantity::pH], "1.00");
}

TEST(ChannelDisplay, A_negative_pH_marks_the_concentrations_and_blanks_its_own_cell) {
    ChannelState channel;
    channel.kind = Kind::pH;
    channel.converted = -1.0F;
    EXPECT_EQ(TextsOf(channel), (Texts{"0.0", "", "Error", "Error", ""}));
}

TEST(ChannelDisplay, An_ion_calibrated_in_ppm_shows_mol_per_litre_by_its_molar_mass) {
    EXPECT_EQ(TextsOf(Ion(31.62F, 0)), (Texts{"188.5", "", "31.6", "7.89E-04", ""}));
}

TEST(ChannelDisplay, An_ion_calibrated_in_mol_per_litre_shows_ppm_by_its_molar_mass) {
    EXPECT_EQ(TextsOf(Ion(0.5F, 1)), (Texts{"188.5", "", "2.00E+04", "0.5", ""}));
}

TEST(ChannelDisplay, A_negative_concentration_is_an_error_in_both_units) {
    EXPECT_EQ(TextsOf(Ion(-1.0F, 0)), (Texts{"188.5", "", "Error", "Error", ""}));
}

TEST(ChannelDisplay, Without_a_molar_mass_only_the_calibrated_unit_is_known) {
    auto channel = Ion(31.62F, 0);
    channel.molarMass_g_per_mol = 0;
    EXPECT_EQ(TextsOf(channel), (Texts{"188.5", "", "31.6", "Error", ""}));
    channel.stdUnit = 1;
    EXPECT_EQ(TextsOf(channel), (Texts{"188.5", "", "Error", "31.6", ""}));
}

TEST(ChannelDisplay, A_concentration_beyond_single_precision_is_an_error_in_its_own_cell) {
    EXPECT_EQ(TextsOf(Ion(1E38F, 1)), (Texts{"188.5", "", "Error", "1.00E+38", ""}));
}

TEST(ChannelDisplay, A_failed_conversion_is_an_error_in_the_cells_of_its_kind) {
    auto channel = Ion(0, 0);
    channel.conversionFailed = true;
    EXPECT_EQ(TextsOf(channel), (Texts{"188.5", "", "Error", "Error", ""}));
    channel.kind = Kind::pH;
    EXPECT_EQ(TextsOf(channel), (Texts{"188.5", "Error", "", "", ""}));
}

TEST(ChannelDisplay, A_channel_that_is_not_converted_shows_its_potential) {
    ChannelState channel;
    channel.kind = Kind::ion;
    channel.potential_mV = 12345.0F;
    EXPECT_EQ(TextsOf(channel), (Texts{"1.23E+04", "", "", "", ""}));
}

TEST(ChannelDisplay, A_channel_without_electrode_shows_potential_and_temperature) {
    ChannelState channel;
    channel.potential_mV = 0.004F;
    channel.temperature_celsius = 21.46F;
    EXPECT_EQ(TextsOf(channel), (Texts{"4.00E-03", "", "", "", "21.5"}));
    channel.converted = -1.0F;
    EXPECT_EQ(TextsOf(channel), (Texts{"4.00E-03", "", "", "", "21.5"}));
}

TEST(ChannelDisplay, A_failed_temperature_is_an_error_in_its_own_cell) {
    auto channel = Ion(10, 0);
    channel.temperature_celsius = 0.0F;
    channel.temperatureFailed = true;
    EXPECT_EQ(TextsOf(channel), (Texts{"188.5", "", "10.0", "2.50E-04", "Error"}));
}

} // namespace
