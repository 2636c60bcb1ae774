#include "report/Verify.h"

#include "base/NumberText.h"
#include "files/MeasurementReader.h"
#include "report/support/MeasuredRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Mreport::VerifyResult;

VerifyResult Verify(const std::string& text, std::uint64_t slice = 4096) {
    const FileOpr::MeasurementReader reader(text);
    Mreport::MemorySource source(text);
    Mreport::Verification verification(source, text.size(), reader.Header());
    while (verification.Step(slice)) {
    }
    return verification.Result();
}

std::string Report(const VerifyResult& result) {
    std::string text = VerdictText(result);
    for (const auto& found : result.divergences)
        text += "\n" + std::to_string(found.number) + " " + Mreport::ChannelName(found.channel) +
                " " + found.potential + " mV: " + found.recorded + " instead of " + found.expected;
    for (const auto& reason : result.reasons)
        text += "\n" + ReasonText(reason);
    return text;
}

/// A run of one record: calcium at 188.5 mV by 100 mV at 1 ppm and 159 mV at 10 ppm.
MeasuredRun Calcium(int records = 1) {
    MeasuredRun run(1, records);
    run.electrode = {"Ca", "None", "None", "None"};
    run.calibration = {};
    run.calibration[0].PointCount = 3;
    run.calibration[0].Standard = {1, 10, 100};
    run.calibration[0].CaliData = {100, 159, 218};
    run.molarMass_g_per_mol = {40.078F, 0, 0, 0};
    for (std::size_t i = 0; i < run.potentials_mV.size(); ++i)
        run.potentials_mV[i] = {188.5F + static_cast<float>(i), 0, 0, 0};
    run.Measure();
    return run;
}

} // namespace

TEST(Verify, A_run_as_it_was_measured_is_reproduced_throughout) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        const MeasuredRun run(seed, 60);
        const auto result = Verify(run.Text());
        EXPECT_EQ(result.records, 60);
        EXPECT_EQ(result.diverged, 0) << "seed " << seed << "\n" << Report(result);
        EXPECT_EQ(result.notComputed, 0) << Report(result);
        EXPECT_GT(result.reproduced, 60);
    }
}

TEST(Verify, A_value_that_was_edited_is_named_with_its_place_and_what_belongs_there) {
    MeasuredRun run = Calcium(3);
    run.records[1][0][Quantity::ppm] = "33.9";
    const std::string text = run.Text();
    const auto result = Verify(text);
    ASSERT_EQ(result.diverged, 1) << Report(result);
    const auto& found = result.divergences.at(0);
    EXPECT_EQ(found.number, 2);
    EXPECT_EQ(found.place, 1);
    EXPECT_EQ(found.channel, 0u);
    EXPECT_EQ(found.quantity, Quantity::ppm);
    EXPECT_EQ(found.potential, "189.5");
    EXPECT_EQ(found.recorded, "33.9");
    EXPECT_EQ(found.expected, "32.8 to 32.9"); // 10^(1 + 30.45/59) to 10^(1 + 30.55/59)
    EXPECT_EQ(text.substr(found.offset, 9), "Record 2\t");
    EXPECT_EQ(result.reproduced, 5);
}

TEST(Verify, The_other_unit_is_held_against_the_built_in_mass) {
    MeasuredRun run = Calcium(3);
    EXPECT_EQ(Verify(run.Text()).reproduced, 6);
    run.records[2][0][Quantity::mol_l] = "1.23E-03";
    const auto result = Verify(run.Text());
    ASSERT_EQ(result.diverged, 1) << Report(result);
    EXPECT_EQ(result.divergences[0].recorded, "1.23E-03");
}

TEST(Verify, Another_molar_mass_that_fits_throughout_is_named) {
    MeasuredRun run = Calcium(40);
    run.molarMass_g_per_mol[0] = 44;
    run.Measure();
    const auto result = Verify(run.Text());
    EXPECT_EQ(result.diverged, 0) << Report(result);
    EXPECT_EQ(result.reproduced, 40);
    ASSERT_EQ(result.notComputed, 40);
    EXPECT_EQ(ReasonText(result.reasons.at(0)),
              "Chan 1 mol/l: 40 not to be computed: fits 44 g/mol; built in is 40.078");
}

TEST(Verify, A_value_edited_under_another_molar_mass_is_still_found) {
    MeasuredRun run = Calcium(40);
    run.molarMass_g_per_mol[0] = 44;
    run.Measure();
    run.records[20][0][Quantity::mol_l] = "9.99E-01";
    const auto result = Verify(run.Text());
    ASSERT_EQ(result.diverged, 1) << Report(result);
    EXPECT_EQ(result.divergences[0].number, 21);
    EXPECT_EQ(result.notComputed, 39);
}

TEST(Verify, A_mass_that_was_not_set_is_no_divergence) {
    MeasuredRun run = Calcium(5);
    run.molarMass_g_per_mol[0] = 0; // the other unit shows "Error" then
    run.Measure();
    ASSERT_EQ(run.records[0][0][Quantity::mol_l], "Error");
    const auto result = Verify(run.Text());
    EXPECT_EQ(result.diverged, 0) << Report(result);
    EXPECT_EQ(result.notComputed, 5);
}

TEST(Verify, An_ion_without_a_built_in_mass_is_told_the_mass_that_fits) {
    MeasuredRun run = Calcium(40);
    run.electrode[0] = "Unheard";
    const auto result = Verify(run.Text());
    EXPECT_EQ(result.diverged, 0) << Report(result);
    ASSERT_EQ(result.notComputed, 40);
    EXPECT_EQ(result.reasons.at(0).why.substr(0, 7), "fits 40") << result.reasons[0].why;
}

TEST(Verify, An_error_in_the_file_must_be_one_of_the_conversion) {
    MeasuredRun run = Calcium();
    run.records[0][0][Quantity::ppm] = "Error";
    EXPECT_EQ(Verify(run.Text()).diverged, 1);
    MeasuredRun failed = Calcium(2);
    failed.calibration[0].Standard = {10, 10, 10}; // gives -1, which is shown as "Error"
    failed.Measure();
    ASSERT_EQ(failed.records[0][0][Quantity::ppm], "Error");
    const auto result = Verify(failed.Text());
    EXPECT_EQ(result.diverged, 0) << Report(result);
}

TEST(Verify, A_value_that_was_taken_out_or_put_in_is_found) {
    MeasuredRun taken = Calcium();
    taken.records[0][0][Quantity::ppm] = "";
    EXPECT_EQ(Verify(taken.Text()).diverged, 1);
    MeasuredRun put = Calcium();
    put.records[0][0][Quantity::pH] = "7.00";
    put.electrode[1] = "H (pH)"; // so that the run has the row
    EXPECT_EQ(Verify(put.Text()).diverged, 1);
}

TEST(Verify, A_row_that_was_taken_out_leaves_its_values_missing) {
    std::string text = Calcium().Text();
    const auto row = text.find("ppm            \t");
    ASSERT_NE(row, std::string::npos);
    text.erase(row, text.find('\n', row) + 1 - row);
    const auto result = Verify(text);
    ASSERT_EQ(result.diverged, 1) << Report(result);
    EXPECT_EQ(result.divergences[0].quantity, Quantity::ppm);
    EXPECT_EQ(result.divergences[0].recorded, "");
}

TEST(Verify, A_record_that_is_cut_off_owes_no_rows) {
    std::string text = Calcium(2).Text();
    text.resize(text.rfind("mol/l"));
    const auto result = Verify(text);
    EXPECT_EQ(result.records, 2);
    EXPECT_EQ(result.diverged, 0) << Report(result);
    EXPECT_EQ(result.reproduced, 3);
}

TEST(Verify, A_potential_that_is_no_number_supports_no_value) {
    MeasuredRun run = Calcium();
    run.records[0][0][Quantity::mV] = "18B.5";
    const auto result = Verify(run.Text());
    ASSERT_EQ(result.diverged, 2) << Report(result);
    EXPECT_EQ(result.divergences[0].expected, "the potential cannot be read");
    run.records[0][0][Quantity::mV] = "NA";
    EXPECT_EQ(Verify(run.Text()).diverged, 2);
}

TEST(Verify, Values_beside_no_calibration_are_not_to_be_computed) {
    MeasuredRun run = Calcium();
    run.calibration[0].PointCount = 0;
    run.calibration[1].PointCount = 2; // so that the header has the rows
    const auto result = Verify(run.Text());
    EXPECT_EQ(result.diverged, 0);
    ASSERT_EQ(result.notComputed, 2);
    EXPECT_EQ(result.reasons.at(0).why, "the header holds no calibration of this channel");
}

TEST(Verify, A_file_without_a_header_is_not_to_be_computed) {
    std::string text = Calcium().Text();
    text.erase(0, text.find("Record 1"));
    const auto result = Verify(text);
    EXPECT_EQ(result.records, 1);
    EXPECT_EQ(result.diverged, 0);
    EXPECT_EQ(result.notComputed, 2);
}

TEST(Verify, The_slices_change_nothing) {
    MeasuredRun run(5, 30);
    run.records[7][1][Quantity::ppm] = "1.0";
    run.records[9][0][Quantity::pH] = "1.00";
    const std::string text = run.Text();
    const auto whole = Verify(text, text.size() + 1);
    const auto sliced = Verify(text, 1);
    EXPECT_EQ(whole.divergences, sliced.divergences);
    EXPECT_EQ(whole.reproduced, sliced.reproduced);
    EXPECT_EQ(whole.diverged, 2);
}

TEST(Verify, More_divergences_than_a_list_holds_are_counted_and_the_first_are_listed) {
    MeasuredRun run = Calcium(1500);
    for (auto& record : run.records)
        record[0][Quantity::ppm] = "1.5";
    const auto result = Verify(run.Text());
    EXPECT_EQ(result.diverged, 1500);
    ASSERT_EQ(result.divergences.size(), VerifyResult::mostListed);
    EXPECT_EQ(result.divergences.back().number, static_cast<int>(VerifyResult::mostListed));
}

TEST(Verify, A_verdict_says_what_was_found) {
    VerifyResult result;
    result.records = 1204;
    result.reproduced = 3610;
    EXPECT_EQ(VerdictText(result), "1,204 records, 3,610 values: 3,610 reproduced, none diverged, "
                                   "none not to be computed.");
    result.diverged = 2;
    EXPECT_EQ(VerdictText(result), "1,204 records, 3,612 values: 3,610 reproduced, 2 diverged, "
                                   "none not to be computed.");
}
