#include "simulator/CommandParser.h"

#include "base/RunTimeError.h"
#include "simulator/Console.h"

#include <gtest/gtest.h>

using namespace simulator;

namespace {

std::string Refusal(std::string_view line) {
    try {
        ParseCommand(line);
    } catch (const RunTimeError& error) {
        return error.what();
    }
    return "taken";
}

template <typename Kind>
Kind Parsed(std::string_view line) {
    return std::get<Kind>(ParseCommand(line));
}

/// A cable that only remembers.
class FakeHost : public Host {
public:
    bool plugged = true;
    bool ended = false;
    std::optional<Seconds> backAfter;
    std::optional<std::uint32_t> bitRate;

    void Unplug(std::optional<Seconds> after) override {
        plugged = false;
        backAfter = after;
    }
    void Replug() override { plugged = true; }
    bool Plugged() const override { return plugged; }
    std::string Place() const override { return "COM1 (/dev/pts/9)"; }
    void SetBitRate(std::optional<std::uint32_t> rate) override { bitRate = rate; }
    void Quit() override { ended = true; }
};

class ConsoleTest : public testing::Test {
protected:
    Session session{Instrument(Instrument::Nature::ideal, 1, Seconds(0)), 1};
    FakeHost host;
    Console console{session, host};

    std::string Do(std::string_view line) {
        const Answer answer = console.Execute(line, Seconds(0));
        return (answer.ok ? "" : "error: ") + answer.text;
    }

    double Value(std::size_t slot) { return session.Measuring().Sample(Seconds(0))[slot]; }
};

} // namespace

TEST(ParseCommand, A_solution_of_an_ion_has_amount_and_unit) {
    const auto command = Parsed<SetSolution>("solution 1 Ca 10 ppm");
    EXPECT_EQ(command.channels.first, 0);
    EXPECT_EQ(command.channels.last, 0);
    ASSERT_EQ(command.solution.ingredients.size(), 1U);
    EXPECT_EQ(command.solution.Text(), "Ca 10 ppm");
}

TEST(ParseCommand, A_buffer_has_its_pH) {
    const auto command = Parsed<SetSolution>("solution 2 pH 7.00");
    EXPECT_EQ(command.channels.first, 1);
    EXPECT_EQ(command.solution.Text(), "pH 7");
    EXPECT_DOUBLE_EQ(command.solution.Concentration("H (pH)"), 1e-7);
}

TEST(ParseCommand, A_solution_for_all_may_hold_several_things) {
    const auto command =
        Parsed<SetSolution>("SOLUTION All ca 1e-3 MOL/L  no3 0.5 mmol/l pH 6.5 redox -120 mV");
    EXPECT_EQ(command.channels.first, 0);
    EXPECT_EQ(command.channels.last, 3);
    EXPECT_EQ(command.solution.Text(), "Ca 0.001 mol/l, NO3 0.5 mmol/l, pH 6.5, Redox -120 mV");
    EXPECT_DOUBLE_EQ(command.solution.Concentration("NO3"), 0.0005);
    EXPECT_DOUBLE_EQ(command.solution.Redox_mV(), -120);
}

TEST(ParseCommand, Water_holds_nothing) {
    EXPECT_TRUE(Parsed<SetSolution>("solution 3 water").solution.ingredients.empty());
}

TEST(ParseCommand, A_temperature_is_in_degrees_Celsius) {
    const auto command = Parsed<SetTemperature>("temperature 1 25.0");
    EXPECT_EQ(command.channels.first, 0);
    EXPECT_DOUBLE_EQ(command.temperature_C, 25);
}

TEST(ParseCommand, An_electrode_takes_its_traits_in_any_order) {
    const auto command = Parsed<SetElectrode>("electrode 4 cl noise 0 slope 95.5 offset -12");
    EXPECT_EQ(command.name, "Cl");
    EXPECT_EQ(command.slope_percent, 95.5);
    EXPECT_EQ(command.offset_mV, -12);
    EXPECT_EQ(command.noise_mV, 0);
    EXPECT_FALSE(command.drift_mV_per_h.has_value());
}

TEST(ParseCommand, A_pH_electrode_has_a_short_and_a_long_name) {
    EXPECT_EQ(Parsed<SetElectrode>("electrode 1 pH").name, "H (pH)");
    EXPECT_EQ(Parsed<SetElectrode>("electrode 1 H (pH) slope 99").name, "H (pH)");
    EXPECT_EQ(Parsed<SetElectrode>("electrode 1 H").name, "H");
}

TEST(ParseCommand, Every_fault_has_its_word) {
    for (const FaultName& each : FaultNames())
        EXPECT_EQ(Parsed<SetFault>("fault " + std::string(each.name)).fault.kind, each.kind);
}

TEST(ParseCommand, A_fault_takes_its_time_and_its_count) {
    const Fault fault = Parsed<SetFault>("fault delay 1.5 times 3").fault;
    EXPECT_EQ(fault.time, Seconds(1.5));
    EXPECT_EQ(fault.replies, 3);
    EXPECT_EQ(fault.Text(), "delay 1.5 s, 3 times");
    EXPECT_FALSE(Parsed<SetFault>("fault silence").fault.replies.has_value());
    EXPECT_EQ(Parsed<SetFault>("fault unplug").fault.replies, 1);
}

TEST(ParseCommand, The_cable_the_line_and_unasked_frames_have_their_words) {
    EXPECT_FALSE(Parsed<Unplug>("unplug").backAfter.has_value());
    EXPECT_EQ(Parsed<Unplug>("unplug 2.5").backAfter, Seconds(2.5));
    Parsed<Replug>("replug");
    EXPECT_EQ(Parsed<SetAutomatic>("auto 1").interval, Seconds(1));
    EXPECT_FALSE(Parsed<SetAutomatic>("auto off").interval.has_value());
    EXPECT_EQ(Parsed<SetBitRate>("bitrate 19200").bitRate, 19200U);
    EXPECT_FALSE(Parsed<SetBitRate>("bitrate auto").bitRate.has_value());
}

TEST(ParseCommand, What_is_wrong_is_said) {
    EXPECT_EQ(Refusal("solutoin 1 Ca 10 ppm"), "\"solutoin\" is no command; type help");
    EXPECT_EQ(Refusal("solution"), "A channel is missing: 1 to 4, or all");
    EXPECT_EQ(Refusal("solution Ca 10 ppm"), "A channel is missing: 1 to 4, or all");
    EXPECT_EQ(Refusal("solution 5 Ca 10 ppm"), "Channel: 5 is not from 1 to 4");
    EXPECT_EQ(Refusal("solution 1.5 Ca 10 ppm"), "Channel: 1.5 is not a whole number");
    EXPECT_EQ(Refusal("solution 1"), "The electrode's name is missing");
    EXPECT_EQ(Refusal("solution 1 Ca"), "Concentration of Ca is missing");
    EXPECT_EQ(Refusal("solution 1 Ca 10"), "The unit of Ca is missing: ppm, mol/l or mmol/l");
    EXPECT_EQ(Refusal("solution 1 Ca 0,5 ppm"), "Concentration of Ca: \"0,5\" is not a number");
    EXPECT_EQ(Refusal("solution 1 Ca -1 ppm"),
              "Concentration of Ca: -1 is not from 1e-12 to 1e+06");
    EXPECT_EQ(Refusal("solution 1 Ca nan ppm"), "Concentration of Ca: \"nan\" is not a number");
    EXPECT_EQ(Refusal("solution 1 pH 20"), "pH: 20 is not from -1 to 15");
    EXPECT_EQ(Refusal("solution 1 None"), "\"None\" is nothing that a solution could hold");
    EXPECT_EQ(Refusal("temperature 1 500"),
              "Temperature in degrees Celsius: 500 is not from -10 to 100");
    EXPECT_EQ(Refusal("temperature 1 25 C"), "\"C\" is not understood here");
    EXPECT_EQ(Refusal("unplug soon"), "Seconds until the cable is back: \"soon\" is not a number");
    EXPECT_EQ(Refusal("auto 0"), "Seconds between frames: 0 is not from 0.001 to 86400");
    EXPECT_EQ(Refusal("fault half 3"), "\"3\" is not understood here");
    EXPECT_EQ(Refusal("fault silence times 0"), "Times: 0 is not from 1 to 1e+06");
}

TEST(ParseCommand, A_wrong_name_is_answered_by_the_list_of_right_ones) {
    EXPECT_EQ(Refusal("fault fire"), "\"fire\" is no fault; there are none, silence, half, badend, "
                                     "garbage, noise, extra, pieces, delay, unplug");
    EXPECT_TRUE(Refusal("electrode 1 Xx").starts_with("\"Xx\" is no electrode; there are Ag, Ba,"));
    EXPECT_EQ(Refusal("bitrate 9601"),
              "\"9601\" is no bit rate; there are 300, 600, 1200, 2400, 4800, 9600, 19200, 38400, "
              "57600, 115200");
}

TEST_F(ConsoleTest, A_solution_reaches_the_electrode_and_the_answer_says_where_it_goes) {
    EXPECT_EQ(Do("solution 1 Ca 10 mmol/l"),
              "Channel 1, Ca electrode in Ca 10 mmol/l, 25.0 C: goes to 29.6 mV");
    EXPECT_NEAR(Value(0), 29.580, 0.001);
}

TEST_F(ConsoleTest, The_wrong_solution_for_an_electrode_is_pointed_out) {
    EXPECT_NE(Do("solution 1 K 10 ppm").find("nothing here that it responds to"),
              std::string::npos);
}

TEST_F(ConsoleTest, All_means_every_channel) {
    Do("temperature all 50");
    for (std::size_t slot : {1U, 3U, 5U, 7U})
        EXPECT_NEAR(Value(slot), 456.9, 1e-9);
}

TEST_F(ConsoleTest, An_electrode_with_a_known_slope_shows_just_that) {
    Do("electrode 2 K slope 90 offset 10");
    Do("solution 2 K 1 mmol/l");
    const double low = Value(2);
    Do("solution 2 K 10 mmol/l");
    EXPECT_NEAR(low, 10, 1e-9);
    EXPECT_NEAR(Value(2) - low, 53.243, 0.001);
}

TEST_F(ConsoleTest, The_cable_is_pulled_and_put_back_once_each) {
    EXPECT_EQ(Do("replug"), "error: The cable is in already");
    EXPECT_EQ(Do("unplug"), "The cable is out; type replug");
    EXPECT_FALSE(host.plugged);
    EXPECT_EQ(Do("unplug"), "error: The cable is out already");
    EXPECT_EQ(Do("replug"), "The cable is in: COM1 (/dev/pts/9)");
    EXPECT_EQ(Do("unplug 2"), "The cable is out for 2 s");
    EXPECT_EQ(host.backAfter, Seconds(2));
}

TEST_F(ConsoleTest, A_wrong_command_changes_nothing) {
    const Values before = session.Measuring().Sample(Seconds(0));
    EXPECT_TRUE(Do("solution 1 Ca 10 ppm NO3 5").starts_with("error: "));
    EXPECT_EQ(session.Measuring().Sample(Seconds(0)), before);
}

TEST_F(ConsoleTest, Empty_lines_and_remarks_are_passed_over) {
    EXPECT_EQ(Do(""), "");
    EXPECT_EQ(Do("  \t\r"), "");
    EXPECT_EQ(Do("# the first standard"), "");
}

TEST_F(ConsoleTest, The_status_tells_place_speed_fault_and_every_channel) {
    Do("fault silence times 2");
    const std::string status = Do("status");
    EXPECT_TRUE(status.starts_with(
        "On COM1 (/dev/pts/9), 9600 bit/s; 0 requests, 0 answers\n"
        "Frames on request only; fault: silence, 2 times\n"
        "Channel 1, Ca electrode in Ca 40 ppm, NO3 10 ppm, pH 7.4, Redox 220 mV, 25.0 C: "));
    EXPECT_NE(status.find("Channel 4, Redox electrode"), std::string::npos);
    EXPECT_NE(status.find("220.0 mV, sensor 745.8"), std::string::npos);
    EXPECT_NE(status.find(", slope 29.58 mV/decade, sensor"), std::string::npos);
    EXPECT_NE(status.find(", slope -59.16 mV/pH, sensor"), std::string::npos);
    EXPECT_NE(status.find(", slope -59.16 mV/decade, sensor"), std::string::npos);
}

TEST_F(ConsoleTest, The_help_names_every_command_and_fault) {
    const std::string help = Do("help");
    for (std::string_view word : {"solution", "temperature", "electrode", "fault", "unplug",
                                  "replug", "auto", "bitrate", "status", "help", "quit"})
        EXPECT_NE(help.find(word), std::string::npos) << word;
    for (const FaultName& each : FaultNames())
        EXPECT_NE(help.find(each.meaning), std::string::npos) << each.name;
}

TEST_F(ConsoleTest, Quit_ends) {
    Do("quit");
    EXPECT_TRUE(host.ended);
}
