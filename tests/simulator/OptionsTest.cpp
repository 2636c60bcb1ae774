#include "simulator/Options.h"

#include "base/RunTimeError.h"

#include <gtest/gtest.h>

using namespace simulator;

namespace {

Options Parse(std::vector<std::string_view> arguments) {
    return ParseOptions(arguments);
}

std::string Refusal(std::vector<std::string_view> arguments) {
    try {
        ParseOptions(arguments);
    } catch (const RunTimeError& error) {
        return error.what();
    }
    return "taken";
}

} // namespace

TEST(ParseOptions, Without_any_it_is_COM1_at_the_programs_speed) {
    const Options options = Parse({});
    EXPECT_EQ(options.task, Options::Task::run);
    EXPECT_EQ(options.comPort, 1);
    EXPECT_FALSE(options.bitRate.has_value());
    EXPECT_FALSE(options.fast);
    EXPECT_TRUE(options.withControl);
    EXPECT_FALSE(options.attached);
}

TEST(ParseOptions, Attached_it_ends_with_its_input) {
    EXPECT_TRUE(Parse({"--attached"}).attached);
}

TEST(ParseOptions, Commands_of_the_start_take_their_words_in_one_or_many_arguments) {
    const Options options =
        Parse({"--electrode", "1", "Ca", "slope", "96", "offset", "-5", "--solution", "1 Ca 10 ppm",
               "--fast", "--unsolicited", "0.5", "--run", "unplug", "3"});
    const std::vector<std::string> expected = {"electrode 1 Ca slope 96 offset -5",
                                               "solution 1 Ca 10 ppm", "auto 0.5", "unplug 3"};
    EXPECT_EQ(options.commands, expected);
    EXPECT_TRUE(options.fast);
}

TEST(ParseOptions, A_command_to_send_takes_the_words_behind_it) {
    const Options options = Parse({"--com", "7", "--send", "solution", "1", "Ca", "10", "ppm"});
    EXPECT_EQ(options.task, Options::Task::send);
    EXPECT_EQ(options.comPort, 7);
    EXPECT_EQ(options.commandToSend, "solution 1 Ca 10 ppm");
}

TEST(ParseOptions, What_is_wrong_is_said) {
    EXPECT_EQ(Refusal({"--colour"}), "\"--colour\" is no option; see --help");
    EXPECT_EQ(Refusal({"status"}), "\"status\" is no option; see --help");
    EXPECT_EQ(Refusal({"--com"}), "--com needs a value");
    EXPECT_EQ(Refusal({"--com", "--fast"}), "--com needs a value");
    EXPECT_EQ(Refusal({"--com", "17"}), "--com: 17 is not from 1 to 16");
    EXPECT_EQ(Refusal({"--com", "one"}), "--com: \"one\" is not a number");
    EXPECT_EQ(Refusal({"--seed", "-1"}), "--seed: \"-1\" is no whole number from 0");
    EXPECT_EQ(Refusal({"--electrode", "9", "Ca"}), "Channel: 9 is not from 1 to 4");
    EXPECT_EQ(Refusal({"--unsolicited", "0"}),
              "Seconds between frames: 0 is not from 0.001 to 86400");
    EXPECT_EQ(Refusal({"--device", "/dev/ttyUSB0", "--fast"}),
              "--device and --fast exclude each other: a real line has its own speed");
    EXPECT_EQ(Refusal({"--device", "/dev/ttyUSB0", "--link", "x"}),
              "--device and --link exclude each other: a device needs no link");
}

TEST(ParseOptions, The_help_names_every_option) {
    const std::string help = OptionHelp();
    for (std::string_view option :
         {"--com", "--link", "--device", "--control", "--no-control", "--send", "--bitrate",
          "--fast", "--unsolicited", "--electrode", "--solution", "--temperature", "--fault",
          "--run", "--ideal", "--seed", "--help", "--version"})
        EXPECT_NE(help.find(std::string(option) + " "), std::string::npos) << option;
}
