#include "settings/SetupChecks.h"

#include "base/Electrode.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

using SetupChecks::Box;
using SetupChecks::Entries;

namespace {

constexpr const char* hardwareMissing =
    "The hardware properties have not been completed yet. Please complete it before activating the "
    "measurement.";
constexpr const char* projectMissing =
    "The project details have not been completely filled yet. Please complete it before activating "
    "the measurement.";
constexpr const char* boxMissing =
    "Please complete all appropriate boxes for the selected electrode "
    "before activating measurement";

int PositionOf(std::string_view electrode) {
    return static_cast<int>(std::ranges::find(Electrode::types, electrode, &Electrode::Type::name) -
                            Electrode::types.begin());
}

/// One calibrated calcium electrode; nothing is missing.
Entries Complete() {
    Entries entries;
    entries.averagingForCalibration = "3";
    entries.averagingForMeasurement = "2";
    entries.projectName = "Well 7";
    entries.analyst = "A. Nalyst";
    entries.channels[0] = {true, PositionOf("Ca"), "CA-1", "40.078", 2};
    return entries;
}

void ExpectFinding(const Entries& entries, const std::string& message, Box box,
                   std::size_t channel = 0) {
    const auto finding = SetupChecks::FirstFinding(entries);
    ASSERT_TRUE(finding) << "expected: " << message;
    EXPECT_EQ(finding->message, message);
    EXPECT_EQ(finding->box, box);
    EXPECT_EQ(finding->channel, channel);
}

} // namespace

TEST(SetupChecks, Where_nothing_is_missing_the_measurement_may_begin) {
    EXPECT_FALSE(SetupChecks::FirstFinding(Complete()));
}

TEST(SetupChecks, Both_averaging_numbers_are_needed) {
    Entries entries = Complete();
    entries.averagingForMeasurement = "0";
    ExpectFinding(entries, hardwareMissing, Box::averagingForMeasurement);
    entries.averagingForCalibration = "";
    ExpectFinding(entries, hardwareMissing, Box::averagingForCalibration);
}

TEST(SetupChecks, Project_and_analyst_are_needed_and_a_prompt_is_no_entry) {
    Entries entries = Complete();
    entries.analyst = " \t ";
    ExpectFinding(entries, projectMissing, Box::analyst);
    entries.projectName = "< Please enter the project name >";
    ExpectFinding(entries, projectMissing, Box::projectName);
}

TEST(SetupChecks, A_selected_channel_needs_electrode_serial_number_and_molar_mass) {
    Entries entries = Complete();
    auto& channel = entries.channels[3];
    channel = {true, 0, "PH-1", "heavy", 2};
    ExpectFinding(entries, boxMissing, Box::molarMass, 3);
    channel.serialNo = "< Please enter >";
    ExpectFinding(entries, boxMissing, Box::serialNo, 3);
    channel.electrode = -1;
    ExpectFinding(entries, boxMissing, Box::electrode, 3);
    channel.selected = false;
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
    channel = {true, Electrode::noneIndex, "", "", 0};
    EXPECT_FALSE(SetupChecks::FirstFinding(entries)) << "without an electrode nothing is needed";
}

TEST(SetupChecks, The_first_electrode_of_the_list_is_an_electrode) {
    Entries entries = Complete();
    entries.channels[0].electrode = 0;
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
}

TEST(SetupChecks, A_selected_electrode_needs_a_calibration_of_two_points) {
    Entries entries = Complete();
    entries.channels[2] = {true, PositionOf("K"), "K-1", "39.098", 1};
    ExpectFinding(entries,
                  "The electrode in channel 3 has not been calibrated.\nYou must either calibrate "
                  "it or de-select it before continuing to measure.",
                  Box::calibrate, 2);
    entries.channels[2].pointCount = 2;
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
}

TEST(SetupChecks, At_least_one_channel_of_the_mode_is_selected) {
    Entries entries = Complete();
    entries.channels[4] = entries.channels[0]; // of the eight-channel mode
    entries.channels[0].selected = false;
    ExpectFinding(entries,
                  "There has not channel being selected, please at least select one of those.",
                  Box::select);
    entries.channelCount = 8;
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
}

TEST(SetupChecks, A_channel_outside_the_mode_is_not_asked_for_anything) {
    Entries entries = Complete();
    entries.channels[4] = {true, -1, "", "", 0};
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
    entries.channelCount = 8;
    ExpectFinding(entries, boxMissing, Box::electrode, 4);
    entries.channels[4] = {true, PositionOf("K"), "K-1", "39.098", 0};
    entries.channelCount = 4;
    EXPECT_FALSE(SetupChecks::FirstFinding(entries));
}

TEST(SetupChecks, The_findings_come_in_the_order_of_the_page) {
    Entries entries = Complete();
    entries.averagingForCalibration = entries.projectName = "";
    entries.channels[0] = {true, PositionOf("Ca"), "", "", 0};
    ExpectFinding(entries, hardwareMissing, Box::averagingForCalibration);
    entries.averagingForCalibration = "3";
    ExpectFinding(entries, projectMissing, Box::projectName);
    entries.projectName = "Well 7";
    ExpectFinding(entries, boxMissing, Box::serialNo);
    entries.channels[0].serialNo = "CA-1";
    const auto finding = SetupChecks::FirstFinding(entries);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->box, Box::calibrate);
}

TEST(SetupChecks, An_averaging_number_is_a_whole_number_from_1_to_1000) {
    EXPECT_EQ(SetupChecks::Averaging(" 12 "), 12);
    EXPECT_EQ(SetupChecks::Averaging("1"), 1);
    EXPECT_EQ(SetupChecks::Averaging("1000"), 1000);
    for (const char* text : {"", "0", "1001", "2.5", "0,5", "abc", "5x", "-1", "99999"})
        EXPECT_EQ(SetupChecks::Averaging(text), std::nullopt) << text;
}

TEST(SetupChecks, A_molar_mass_is_a_number_or_does_not_apply) {
    EXPECT_EQ(SetupChecks::MolarMass("58.44"), 58.44F);
    EXPECT_EQ(SetupChecks::MolarMass(" n/a "), 0.0F);
    EXPECT_EQ(SetupChecks::MolarMass("0"), 0.0F);
    EXPECT_EQ(SetupChecks::MolarMass("0.5"), 0.5F);
    EXPECT_EQ(SetupChecks::MolarMass(""), 0.0F);
    for (const char* text : {"58,44", "-1", "-0.5", "heavy", "1e99"})
        EXPECT_EQ(SetupChecks::MolarMass(text), std::nullopt) << text;
}

TEST(SetupChecks, Two_channels_of_the_mode_with_one_electrode_are_a_pair) {
    const fake::Platform platform;
    auto& setup = mWinInit::ChannelSetup;
    setup[0].Electrode = "Ca";
    setup[1].Electrode = setup[2].Electrode = "None";
    setup[3].Electrode = "K";
    setup[4].Electrode = "Ca";
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair()) << "channel 5 is not in use";
    setup[3].Electrode = "Ca";
    EXPECT_TRUE(SetupChecks::HasSimultaneousPair());
    setup[0].Electrode = setup[3].Electrode = "Redox mV";
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair()) << "mV electrodes are not calibrated together";
}

TEST(SetupChecks, A_pair_is_found_on_any_two_channels) {
    const fake::Platform platform;
    auto& setup = mWinInit::ChannelSetup;
    for (std::size_t first = 0; first < 4; ++first)
        for (std::size_t second = first + 1; second < 4; ++second) {
            setup = {};
            setup[first].Electrode = setup[second].Electrode = "Ca";
            EXPECT_TRUE(SetupChecks::HasSimultaneousPair()) << first << " and " << second;
        }
}

TEST(SetupChecks, Unused_channels_with_empty_names_are_no_pair) {
    const fake::Platform platform;
    EXPECT_FALSE(SetupChecks::HasSimultaneousPair());
}
