#include "screens/calibration/CalibrationTexts.h"
#include "chem/StandardEntry.h"
#include "screens/calibration/SlopeLines.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

CalibrationRecord Record(std::initializer_list<float> standards,
                         std::initializer_list<float> readings_mV) {
    CalibrationRecord record;
    record.PointCount = static_cast<std::int16_t>(standards.size());
    std::copy(standards.begin(), standards.end(), record.Standard.begin());
    std::copy(readings_mV.begin(), readings_mV.end(), record.CaliData.begin());
    return record;
}

} // namespace

TEST(CalibrationTexts, The_prompt_names_what_is_typed) {
    EXPECT_EQ(CalibrationTexts::Prompt(true, StandardUnit::ppm), "< Type pH value here >");
    EXPECT_EQ(CalibrationTexts::Prompt(true, StandardUnit::mol_per_litre),
              "< Type pH value here >");
    EXPECT_EQ(CalibrationTexts::Prompt(false, StandardUnit::ppm), "< Type ppm here >");
    EXPECT_EQ(CalibrationTexts::Prompt(false, StandardUnit::mol_per_litre), "< Type mol/l here >");
}

TEST(CalibrationTexts, Headings_and_labels_follow_kind_and_unit) {
    EXPECT_EQ(CalibrationTexts::ColumnHeading(true), "Calibration Point:");
    EXPECT_EQ(CalibrationTexts::ColumnHeading(false), "Standards:");
    EXPECT_EQ(CalibrationTexts::PointLabel(true, StandardUnit::mol_per_litre), "pH:");
    EXPECT_EQ(CalibrationTexts::PointLabel(false, StandardUnit::ppm), "ppm:");
    EXPECT_EQ(CalibrationTexts::PointLabel(false, StandardUnit::mol_per_litre), "mol/l:");
}

TEST(CalibrationTexts, A_field_with_any_prompt_counts_as_blank) {
    for (const bool isPH : {true, false})
        for (const StandardUnit unit : {StandardUnit::ppm, StandardUnit::mol_per_litre})
            EXPECT_TRUE(StandardEntry::IsBlank(CalibrationTexts::Prompt(isPH, unit)));
}

TEST(CalibrationTexts, Nine_lines_of_instructions_are_joined_by_carriage_return_and_line_feed) {
    const std::string expected =
        "For 'Simultaneous Calibration', you need only to type the concentration once, \r\n"
        "for the first electrode.\r\n"
        "You must then immerse the electrode(s)in the first calibrating solution \r\n"
        "(to minimise cross contamination, use the lowest concentration first, \r\n"
        "then work up sequentially), type the concentration and click on the 'Read' \r\n"
        "button (or press 'Enter').\r\n"
        "When the reading of the electrode is stable, click on the 'Record' button, \r\n"
        "The cursor will then move to the next calibration point to repeat the  \r\n"
        "process until all calibrating solutions have been measured.";
    EXPECT_EQ(CalibrationTexts::Instructions(), expected);
}

TEST(CalibrationTexts, Each_bold_phrase_stands_within_one_line) {
    for (const auto phrase : CalibrationTexts::boldPhrases) {
        int found = 0;
        for (const auto line : CalibrationTexts::instructionLines)
            found += line.find(phrase) != std::string_view::npos ? 1 : 0;
        EXPECT_EQ(found, 1) << phrase;
    }
}

TEST(SlopeLines, The_list_has_a_line_for_each_segment) {
    CalibrationRecord record = Record({4, 7, 10}, {177.5F, 0, -150});
    record.Slope = {-59.2F, -50};
    const auto lines = SlopeLines(record, "H (pH)");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].points, "1 - 2");
    EXPECT_EQ(lines[0].slope, "-59.2");
    EXPECT_EQ(lines[0].percent, "100.1 %");
    EXPECT_TRUE(lines[0].usual);
    EXPECT_EQ(lines[1].points, "2 - 3");
    EXPECT_EQ(lines[1].slope, "-50.0");
    EXPECT_EQ(lines[1].percent, "84.5 %");
    EXPECT_FALSE(lines[1].usual);
    EXPECT_NE(SlopeRemark(lines).find("90 to 105 %"), std::string::npos);
}

TEST(SlopeLines, Usual_slopes_and_slopes_without_theory_get_no_remark) {
    CalibrationRecord record = Record({1, 10}, {0, 29});
    record.Slope = {29};
    EXPECT_EQ(SlopeRemark(SlopeLines(record, "Ca")), "");
    const auto redox = SlopeLines(record, "Redox");
    EXPECT_EQ(redox.at(0).percent, "");
    EXPECT_EQ(SlopeRemark(redox), "");
}

TEST(SlopeLines, A_record_without_points_has_no_lines) {
    EXPECT_TRUE(SlopeLines(CalibrationRecord(), "Ca").empty());
}
