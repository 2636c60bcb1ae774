#include "simulator/ElectrodeModel.h"

#include "simulator/Instrument.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace simulator;

namespace {

constexpr Seconds start{0};

Solution Of(const std::string& name, double amount, Unit unit) {
    return Solution{{{name, amount, unit}}};
}

double SettledIn(const ElectrodeTraits& traits, const Solution& solution,
                 double temperature_C = 25) {
    return ElectrodeModel(traits, solution, temperature_C, start).Potential(start);
}

} // namespace

// RT ln(10) / F at 298.15 K is 59.1593 mV; the charge divides it.
TEST(NernstSlope, Is_59_16_mV_for_a_single_charge_at_25_degrees) {
    EXPECT_NEAR(NernstSlope(1, 25), 59.159, 0.001);
    EXPECT_NEAR(NernstSlope(-1, 25), -59.159, 0.001);
    EXPECT_NEAR(NernstSlope(2, 25), 29.580, 0.001);
    EXPECT_NEAR(NernstSlope(-2, 25), -29.580, 0.001);
}

// At 0 degrees 54.197 mV, at 50 degrees 64.120 mV: proportional to the absolute temperature.
TEST(NernstSlope, Grows_with_the_absolute_temperature) {
    EXPECT_NEAR(NernstSlope(1, 0), 54.199, 0.001);
    EXPECT_NEAR(NernstSlope(1, 50), 64.120, 0.001);
}

TEST(NernstSlope, Is_0_for_what_has_no_charge) {
    EXPECT_EQ(NernstSlope(0, 25), 0);
}

TEST(ElectrodeModel, A_decade_of_calcium_makes_29_58_mV) {
    const ElectrodeTraits ca = IdealTraits("Ca");
    const double low = SettledIn(ca, Of("Ca", 1, Unit::ppm));
    const double high = SettledIn(ca, Of("Ca", 10, Unit::ppm));
    EXPECT_NEAR(high - low, 29.580, 0.001);
}

TEST(ElectrodeModel, A_decade_of_nitrate_makes_59_16_mV_downwards) {
    const ElectrodeTraits nitrate = IdealTraits("NO3");
    const double low = SettledIn(nitrate, Of("NO3", 1, Unit::ppm));
    const double high = SettledIn(nitrate, Of("NO3", 10, Unit::ppm));
    EXPECT_NEAR(high - low, -59.159, 0.001);
}

// 40.078 g/mol, so 40.078 ppm are 1 mmol/l, where the potential is the offset.
TEST(ElectrodeModel, The_offset_is_the_potential_at_1_mmol_per_litre_in_any_unit) {
    ElectrodeTraits ca = IdealTraits("Ca");
    ca.offset_mV = 12.5;
    EXPECT_NEAR(SettledIn(ca, Of("Ca", 1, Unit::mmol_per_l)), 12.5, 1e-9);
    EXPECT_NEAR(SettledIn(ca, Of("Ca", 0.001, Unit::mol_per_l)), 12.5, 1e-9);
    EXPECT_NEAR(SettledIn(ca, Of("Ca", 40.078, Unit::ppm)), 12.5, 1e-4);
}

TEST(ElectrodeModel, A_pH_electrode_shows_its_offset_at_pH_7_and_falls_with_the_pH) {
    ElectrodeTraits pH = IdealTraits("H (pH)");
    pH.offset_mV = -3;
    EXPECT_NEAR(SettledIn(pH, Of("pH", 7, Unit::pH)), -3, 1e-9);
    EXPECT_NEAR(SettledIn(pH, Of("pH", 4, Unit::pH)), -3 + 3 * 59.159, 0.003);
    EXPECT_NEAR(SettledIn(pH, Of("pH", 10, Unit::pH)), -3 - 3 * 59.159, 0.003);
}

TEST(ElectrodeModel, A_solution_without_a_pH_is_neutral) {
    EXPECT_NEAR(SettledIn(IdealTraits("H (pH)"), Of("Ca", 10, Unit::ppm)), 0, 1e-9);
}

TEST(ElectrodeModel, Hydroxide_and_hydrogen_follow_each_other) {
    // pH 10 is 1e-4 mol/l of OH, a decade below the reference of 1 mmol/l; an anion rises there.
    EXPECT_NEAR(SettledIn(IdealTraits("OH"), Of("pH", 10, Unit::pH)), 59.159, 0.001);
    EXPECT_NEAR(SettledIn(IdealTraits("H (pH)"), Of("OH", 1e-4, Unit::mol_per_l)), -3 * 59.159,
                0.003);
}

TEST(ElectrodeModel, The_efficiency_scales_the_slope) {
    ElectrodeTraits potassium = IdealTraits("K");
    potassium.efficiency = 0.9;
    const double step = SettledIn(potassium, Of("K", 100, Unit::ppm)) -
                        SettledIn(potassium, Of("K", 10, Unit::ppm));
    EXPECT_NEAR(step, 0.9 * 59.159, 0.001);
}

TEST(ElectrodeModel, A_Redox_electrode_shows_the_potential_of_the_solution) {
    ElectrodeTraits redox = IdealTraits("Redox");
    redox.offset_mV = 5;
    EXPECT_NEAR(SettledIn(redox, Of("Redox", 220, Unit::mV)), 225, 1e-9);
}

TEST(ElectrodeModel, An_empty_input_shows_nothing) {
    EXPECT_EQ(SettledIn(BelievableTraits("None"), Of("Ca", 10, Unit::ppm)), 0);
}

TEST(ElectrodeModel, Below_the_detection_limit_the_slope_is_lost) {
    ElectrodeTraits fluoride = IdealTraits("F");
    fluoride.limit_mol_per_l = 1e-6;
    const double absent = SettledIn(fluoride, Solution{});
    EXPECT_NEAR(absent, 3 * 59.159, 0.003) << "1e-6 is three decades below 1 mmol/l";
    EXPECT_NEAR(SettledIn(fluoride, Of("F", 1e-9, Unit::mol_per_l)), absent, 0.1);
}

TEST(ElectrodeModel, Water_without_a_detection_limit_still_gives_a_number) {
    EXPECT_TRUE(std::isfinite(SettledIn(IdealTraits("Ca"), Solution{})));
}

// exp(-1) of the change is left after one time constant, exp(-3) = 5 % after three.
TEST(ElectrodeModel, A_change_of_solution_is_answered_exponentially) {
    ElectrodeTraits traits = IdealTraits("Na");
    traits.responseTime = Seconds(2);
    ElectrodeModel electrode(traits, Of("Na", 1, Unit::mmol_per_l), 25, start);
    electrode.Dip(Of("Na", 10, Unit::mmol_per_l), 25, Seconds(100));
    EXPECT_NEAR(electrode.Potential(Seconds(100)), 0, 1e-9);
    EXPECT_NEAR(electrode.Potential(Seconds(102)), 59.159 * (1 - std::exp(-1.0)), 0.001);
    EXPECT_NEAR(electrode.Potential(Seconds(106)), 59.159 * (1 - std::exp(-3.0)), 0.001);
    EXPECT_NEAR(electrode.Potential(Seconds(140)), 59.159, 0.001);
}

TEST(ElectrodeModel, A_change_before_it_has_settled_starts_where_it_stands) {
    ElectrodeTraits traits = IdealTraits("Na");
    traits.responseTime = Seconds(2);
    ElectrodeModel electrode(traits, Of("Na", 1, Unit::mmol_per_l), 25, start);
    electrode.Dip(Of("Na", 10, Unit::mmol_per_l), 25, start);
    const double between = electrode.Potential(Seconds(1));
    electrode.Dip(Of("Na", 1, Unit::mmol_per_l), 25, Seconds(1));
    EXPECT_NEAR(electrode.Potential(Seconds(1)), between, 1e-9);
    EXPECT_NEAR(electrode.Potential(Seconds(30)), 0, 0.001);
}

TEST(ElectrodeModel, Without_response_time_a_change_shows_at_once) {
    ElectrodeModel electrode(IdealTraits("Na"), Of("Na", 1, Unit::mmol_per_l), 25, start);
    electrode.Dip(Of("Na", 10, Unit::mmol_per_l), 25, Seconds(1));
    EXPECT_NEAR(electrode.Potential(Seconds(1)), 59.159, 0.001);
}

TEST(ElectrodeModel, The_drift_adds_up_over_the_hours_and_a_new_solution_does_not_end_it) {
    ElectrodeTraits traits = IdealTraits("Redox");
    traits.drift_mV_per_h = 0.5;
    ElectrodeModel electrode(traits, Of("Redox", 100, Unit::mV), 25, start);
    EXPECT_NEAR(electrode.Potential(Seconds(2 * 3600)), 101, 1e-9);
    electrode.Dip(Of("Redox", 200, Unit::mV), 25, Seconds(2 * 3600));
    EXPECT_NEAR(electrode.Potential(Seconds(4 * 3600)), 202, 1e-9);
}

TEST(ElectrodeModel, Dissolved_ammonia_lowers_its_electrode) {
    const double step = SettledIn(IdealTraits("NH3"), Of("NH3", 10, Unit::ppm)) -
                        SettledIn(IdealTraits("NH3"), Of("NH3", 1, Unit::ppm));
    EXPECT_NEAR(step, -59.159, 0.001);
}

TEST(Instrument, An_ideal_one_gives_the_same_reading_every_time) {
    Instrument instrument(Instrument::Nature::ideal, 1, start);
    EXPECT_EQ(instrument.Sample(start), instrument.Sample(Seconds(3600)));
}

TEST(Instrument, The_same_seed_gives_the_same_noise_and_another_one_does_not) {
    Instrument first(Instrument::Nature::believable, 7, start);
    Instrument second(Instrument::Nature::believable, 7, start);
    Instrument third(Instrument::Nature::believable, 8, start);
    const Values values = first.Sample(start);
    EXPECT_EQ(values, second.Sample(start));
    EXPECT_NE(values, third.Sample(start));
}

// The standard deviation of 2000 readings is within 5 % of the true one in more than 99 % of all
// series (its own deviation is 1/sqrt(2n) = 1.6 %); the seed is fixed.
TEST(Instrument, The_noise_has_the_size_that_the_electrode_says) {
    Instrument instrument(Instrument::Nature::ideal, 3, start);
    ElectrodeTraits traits = IdealTraits("Redox");
    traits.noise_mV = 2;
    instrument.SetElectrode(0, traits, start);
    const double middle = instrument.ElectrodeOf(0).Potential(start);
    constexpr int readings = 2000;
    double squares = 0;
    for (int i = 0; i < readings; ++i) {
        const double deviation = instrument.Sample(start)[0] - middle;
        squares += deviation * deviation;
    }
    EXPECT_NEAR(std::sqrt(squares / readings), 2.0, 0.1);
}

TEST(Instrument, A_warmer_vessel_steepens_the_electrode_in_it_alone) {
    Instrument instrument(Instrument::Nature::ideal, 1, start);
    for (int channel : {0, 1})
        instrument.SetElectrode(channel, IdealTraits("K"), start);
    for (int channel : {0, 1})
        instrument.SetSolution(channel, Of("K", 10, Unit::mmol_per_l), start);
    instrument.SetTemperature(0, 50, start);
    const Values values = instrument.Sample(start);
    EXPECT_NEAR(values[0], 64.120, 0.001);
    EXPECT_NEAR(values[2], 59.159, 0.001);
    EXPECT_NEAR(values[1], 456.9, 1e-9) << "the sensor's table at 50 degrees";
    EXPECT_NEAR(values[3], 745.8, 1e-9);
}
