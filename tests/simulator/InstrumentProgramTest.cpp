#include "TestPort.h"
#include "simulator/Port.h"
#include "support/FakePlatform.h"
#include "support/InstrumentProcess.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

#include <poll.h>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t frameLength = 48;

/// A configuration folder of the test's own.
class InstrumentProgram : public testing::Test {
protected:
    fake::TemporaryFolder folder;
    const fs::path& configHome = folder.Path();

    fs::path LinkOf(int number) const {
        return configHome / "Vantrel" / "ports" / ("com" + std::to_string(number));
    }

    static double FirstValue(const Bytes& frame) {
        if (frame.size() != frameLength)
            return -1e9;
        return std::stod(std::string(frame.begin(), frame.begin() + 5)) / 10;
    }
};

std::chrono::duration<double, std::milli> TimeOf(auto&& action) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::steady_clock::now() - begin;
}

/// Asks over the end of a line that a Port is, and waits for a whole frame.
Bytes RequestOver(simulator::Port& port) {
    constexpr std::array<std::uint8_t, 1> request = {0x02};
    port.Write(request);
    Bytes bytes;
    const auto giveUp = std::chrono::steady_clock::now() + 5s;
    while (bytes.size() < frameLength && std::chrono::steady_clock::now() < giveUp) {
        pollfd poll{port.PollDescriptor(), POLLIN, 0};
        ::poll(&poll, 1, 100);
        const Bytes more = port.Read();
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    return bytes;
}

} // namespace

TEST_F(InstrumentProgram, Says_where_it_is_and_is_a_port_of_the_program) {
    InstrumentProcess instrument(configHome);
    EXPECT_EQ(instrument.Greeting(), "Instrument on COM1 (" + instrument.Device() + "), type help");
    EXPECT_EQ(fs::read_symlink(LinkOf(1)), instrument.Device());
}

TEST_F(InstrumentProgram, Answers_a_request_with_one_frame) {
    InstrumentProcess instrument(configHome,
                                 {"--ideal", "--solution", "1", "Ca", "10", "mmol/l", "--fast"});
    TestPort port(instrument.Link());
    const Bytes frame = port.Request();
    // 29.6 mV for a decade of a divalent ion, 745.8 for 25 degrees.
    ASSERT_EQ(frame.size(), frameLength);
    EXPECT_EQ(std::string(frame.begin(), frame.begin() + 12), "+0296\t+7458\t");
    EXPECT_EQ(frame.back(), 0x04);
    EXPECT_TRUE(port.Read(1, 50ms).empty()) << "nothing behind the frame";
}

TEST_F(InstrumentProgram, Takes_commands_over_the_socket_while_it_runs) {
    InstrumentProcess instrument(configHome, {"--ideal", "--fast"});
    TestPort port(instrument.Link());
    instrument.Command("solution 1 Ca 1 mmol/l");
    EXPECT_DOUBLE_EQ(FirstValue(port.Request()), 0);
    instrument.Command("solution 1 Ca 10 mmol/l");
    EXPECT_DOUBLE_EQ(FirstValue(port.Request()), 29.6);
    EXPECT_THROW(instrument.Command("solution 1 Ca ten ppm"), std::runtime_error);
}

TEST_F(InstrumentProgram, Takes_commands_from_its_standard_input) {
    InstrumentProcess instrument(configHome, {"--ideal", "--fast"});
    instrument.WriteInput("temperature 1 50");
    EXPECT_TRUE(instrument.ReadLine().starts_with("Channel 1, Ca electrode in "));
    instrument.WriteInput("temperature 1 hot");
    EXPECT_EQ(instrument.ReadLine(),
              "Error: Temperature in degrees Celsius: \"hot\" is not a number");
    TestPort port(instrument.Link());
    const Bytes frame = port.Request();
    ASSERT_EQ(frame.size(), frameLength);
    EXPECT_EQ(std::string(frame.begin() + 6, frame.begin() + 11), "+4569");
    instrument.WriteInput("quit");
    EXPECT_EQ(instrument.WaitForEnd(), 0);
}

TEST_F(InstrumentProgram, Goes_on_when_its_standard_input_ends) {
    InstrumentProcess instrument(configHome, {"--fast"});
    instrument.CloseInput();
    for (int i = 0; i < 3; ++i)
        instrument.Command("status");
    EXPECT_EQ(TestPort(instrument.Link()).Request().size(), frameLength);
}

TEST_F(InstrumentProgram, Attached_to_its_parent_it_ends_with_its_input_and_its_link_is_gone) {
    InstrumentProcess instrument(configHome, {"--attached"});
    ASSERT_TRUE(fs::is_symlink(instrument.Link()));

    instrument.CloseInput();

    EXPECT_EQ(instrument.WaitForEnd(), 0);
    EXPECT_FALSE(fs::is_symlink(instrument.Link()));
    EXPECT_FALSE(fs::exists(instrument.Link().string() + ".control"));
}

TEST_F(InstrumentProgram, A_line_without_end_at_the_socket_or_the_input_does_no_harm) {
    InstrumentProcess instrument(configHome, {"--fast"});
    EXPECT_THROW(instrument.Command(std::string(100000, 'x')), std::runtime_error);
    instrument.WriteInput(std::string(20000, 'x'));
    EXPECT_TRUE(instrument.ReadLine().starts_with("Error: \"x"));
    EXPECT_EQ(TestPort(instrument.Link()).Request().size(), frameLength);
}

TEST_F(InstrumentProgram, Ends_while_its_standard_input_never_runs_dry) {
    std::signal(SIGPIPE, SIG_IGN); // of the line that it takes no more
    InstrumentProcess instrument(configHome);
    const std::jthread writer([&instrument](const std::stop_token& stop) {
        try {
            while (!stop.stop_requested())
                instrument.WriteInput(std::string(4000, '\n'));
        } catch (const std::runtime_error&) { // it has ended
        }
    });
    std::this_thread::sleep_for(100ms); // more waits than it can read in the meantime
    EXPECT_EQ(instrument.Stop(), 0);
}

TEST_F(InstrumentProgram, A_command_can_be_sent_by_the_program_itself) {
    InstrumentProcess instrument(configHome, {"--ideal", "--com", "3"});
    const auto good = InstrumentProcess::RunToEnd(
        configHome, {"--com", "3", "--send", "solution", "1", "Ca", "10", "mmol/l"});
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_EQ(good.output, "Channel 1, Ca electrode in Ca 10 mmol/l, 25.0 C: goes to 29.6 mV\n");
    const auto bad =
        InstrumentProcess::RunToEnd(configHome, {"--com", "3", "--send", "frobnicate"});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(bad.output, "\"frobnicate\" is no command; type help\n");
    const auto nobody = InstrumentProcess::RunToEnd(configHome, {"--com", "4", "--send", "status"});
    EXPECT_EQ(nobody.exitCode, 1);
    EXPECT_NE(nobody.output.find("No instrument listens at "), std::string::npos);
}

/// The shortest of five answers' times. A loaded machine may wake both processes late; the best
/// shows the line rather than the load.
double BestAnswer_ms(TestPort& port) {
    double best_ms = 1e9;
    for (int i = 0; i < 5; ++i)
        best_ms = std::min(best_ms,
                           TimeOf([&] { EXPECT_EQ(port.Request().size(), frameLength); }).count());
    return best_ms;
}

// 480 bits at 9600 bit/s are 50 ms. It cannot be faster but by what the instrument's clock is read
// early, far below a millisecond.
TEST_F(InstrumentProgram, At_9600_a_frame_takes_50_ms) {
    InstrumentProcess instrument(configHome);
    TestPort port(instrument.Link(), B9600);
    const double best_ms = BestAnswer_ms(port);
    EXPECT_GE(best_ms, 49.5);
    EXPECT_LT(best_ms, 70);
}

TEST_F(InstrumentProgram, The_line_follows_the_speed_that_the_program_sets) {
    InstrumentProcess instrument(configHome);
    TestPort port(instrument.Link(), B19200);
    const double at19200_ms = BestAnswer_ms(port);
    EXPECT_GE(at19200_ms, 24.5);
    EXPECT_LT(at19200_ms, 45);
    port.SetSpeed(B1200);
    const double at1200_ms = BestAnswer_ms(port);
    EXPECT_GE(at1200_ms, 399.5);
    EXPECT_LT(at1200_ms, 420);
}

TEST_F(InstrumentProgram, A_bit_rate_of_its_own_is_kept) {
    InstrumentProcess instrument(configHome, {"--bitrate", "2400"});
    TestPort port(instrument.Link(), B115200);
    EXPECT_GE(TimeOf([&] { port.Request(); }).count(), 199.5); // 480 bits
}

TEST_F(InstrumentProgram, Frames_come_by_themselves_when_they_are_to) {
    InstrumentProcess instrument(configHome, {"--fast", "--unsolicited", "0.02"});
    TestPort port(instrument.Link());
    const Bytes bytes = port.Read(3 * frameLength, 5s);
    ASSERT_EQ(bytes.size(), 3 * frameLength);
    for (std::size_t end : {47U, 95U, 143U})
        EXPECT_EQ(bytes[end], 0x04);
}

TEST_F(InstrumentProgram, Each_fault_reaches_the_line) {
    InstrumentProcess instrument(configHome, {"--fast"});
    TestPort port(instrument.Link());
    instrument.Command("fault silence times 1");
    EXPECT_EQ(port.Request(frameLength, 100ms).size(), 0U);
    instrument.Command("fault half times 1");
    EXPECT_EQ(port.Request(frameLength, 100ms).size(), frameLength / 2);
    instrument.Command("fault badend times 1");
    EXPECT_EQ(port.Request().back(), 0x09);
    instrument.Command("fault extra times 1");
    EXPECT_EQ(port.Request(100, 100ms).size(), frameLength + 12);
    instrument.Command("fault delay 0.2 times 1");
    EXPECT_GE(TimeOf([&] { port.Request(); }).count(), 199.5);
    EXPECT_EQ(port.Request().back(), 0x04) << "all is well again";
}

TEST_F(InstrumentProgram, An_unplugged_cable_is_a_hang_up_and_the_port_comes_back) {
    InstrumentProcess instrument(configHome, {"--fast"});
    {
        TestPort port(instrument.Link());
        ASSERT_EQ(port.Request().size(), frameLength);
        EXPECT_FALSE(port.HungUp(0ms));
        instrument.Command("unplug");
        EXPECT_TRUE(port.HungUp(5s));
        EXPECT_FALSE(fs::exists(fs::symlink_status(LinkOf(1))));
    }
    instrument.Command("replug");
    TestPort again(instrument.Link());
    EXPECT_EQ(again.Request().size(), frameLength);
}

TEST_F(InstrumentProgram, The_new_cable_works_while_the_old_end_is_still_open) {
    InstrumentProcess instrument(configHome, {"--fast"});
    TestPort old(instrument.Link());
    instrument.Command("unplug");
    instrument.Command("replug");
    TestPort again(instrument.Link());
    EXPECT_EQ(again.Request().size(), frameLength);
    EXPECT_TRUE(old.HungUp(5s));
}

TEST_F(InstrumentProgram, The_cable_can_be_pulled_in_the_middle_of_a_frame) {
    InstrumentProcess instrument(configHome);
    TestPort port(instrument.Link());
    instrument.Command("fault unplug");
    const Bytes bytes = port.Request();
    EXPECT_LE(bytes.size(), frameLength / 2); // what was not read before the hang-up is lost
    EXPECT_TRUE(port.HungUp(5s));
    instrument.Command("replug");
    TestPort again(instrument.Link());
    EXPECT_EQ(again.Request().size(), frameLength);
}

TEST_F(InstrumentProgram, A_cable_that_was_pulled_for_a_time_comes_back_by_itself) {
    InstrumentProcess instrument(configHome, {"--fast"});
    instrument.Command("unplug 0.05");
    const auto giveUp = std::chrono::steady_clock::now() + 5s;
    while (!fs::exists(LinkOf(1)) && std::chrono::steady_clock::now() < giveUp)
        std::this_thread::sleep_for(2ms);
    TestPort again(instrument.Link());
    EXPECT_EQ(again.Request().size(), frameLength);
}

TEST_F(InstrumentProgram, What_one_program_left_unread_the_next_one_does_not_find) {
    InstrumentProcess instrument(configHome, {"--fast"});
    {
        TestPort careless(instrument.Link());
        careless.Request(10);
    }
    instrument.Command("status"); // answered after the close was seen
    TestPort next(instrument.Link());
    EXPECT_TRUE(next.Read(1, 50ms).empty());
    EXPECT_EQ(next.Request().back(), 0x04);
}

TEST_F(InstrumentProgram, A_port_that_nobody_has_open_costs_no_processor_time) {
    InstrumentProcess instrument(configHome, {"--fast"});
    { TestPort port(instrument.Link()); }
    const auto ticksUsed = [&] {
        std::ifstream stat("/proc/" + std::to_string(instrument.Id()) + "/stat");
        std::string field;
        long sum = 0;
        for (int i = 1; i <= 15 && stat >> field; ++i)
            sum += i >= 14 ? std::stol(field) : 0; // user and system time
        return sum;
    };
    const long before = ticksUsed();
    std::this_thread::sleep_for(500ms); // a loop that spins uses 50 ticks of 10 ms meanwhile
    EXPECT_LE(ticksUsed() - before, 5);
}

TEST_F(InstrumentProgram, Its_links_are_gone_after_each_way_to_end) {
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        InstrumentProcess instrument(configHome);
        ASSERT_TRUE(fs::exists(LinkOf(1)));
        EXPECT_EQ(instrument.Stop(signal), 0);
        EXPECT_TRUE(fs::is_empty(LinkOf(1).parent_path()));
    }
    InstrumentProcess instrument(configHome);
    instrument.Command("quit");
    EXPECT_EQ(instrument.WaitForEnd(), 0);
    EXPECT_TRUE(fs::is_empty(LinkOf(1).parent_path()));
}

TEST_F(InstrumentProgram, What_a_killed_instrument_left_behind_is_replaced) {
    {
        InstrumentProcess killed(configHome);
        killed.Stop(SIGKILL);
    }
    ASSERT_TRUE(fs::is_symlink(LinkOf(1)));
    InstrumentProcess instrument(configHome, {"--fast"});
    EXPECT_EQ(fs::read_symlink(LinkOf(1)), instrument.Device());
    EXPECT_EQ(TestPort(instrument.Link()).Request().size(), frameLength);
}

TEST_F(InstrumentProgram, A_second_one_on_the_same_port_is_refused_and_the_first_goes_on) {
    InstrumentProcess first(configHome, {"--fast"});
    const auto second = InstrumentProcess::RunToEnd(configHome, {});
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_NE(second.output.find("Another instrument is at work there"), std::string::npos);
    EXPECT_EQ(TestPort(first.Link()).Request().size(), frameLength);
    InstrumentProcess other(configHome, {"--fast", "--com", "2"});
    EXPECT_EQ(TestPort(other.Link(2)).Request().size(), frameLength);
}

TEST_F(InstrumentProgram, A_link_that_the_user_made_is_left_alone) {
    fs::create_directories(LinkOf(1).parent_path());
    fs::create_symlink("/dev/null", LinkOf(1));
    const auto result = InstrumentProcess::RunToEnd(configHome, {});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.output.find("it is a link to /dev/null already"), std::string::npos);
    EXPECT_EQ(fs::read_symlink(LinkOf(1)), "/dev/null");
}

TEST_F(InstrumentProgram, Another_link_can_be_made) {
    const fs::path link = configHome / "elsewhere" / "instrument";
    InstrumentProcess instrument(configHome, {"--fast", "--link", link.string()});
    EXPECT_EQ(instrument.Greeting(),
              "Instrument on " + link.string() + " (" + instrument.Device() + "), type help");
    EXPECT_EQ(TestPort(link).Request().size(), frameLength);
    EXPECT_FALSE(fs::exists(fs::symlink_status(LinkOf(1))));
    instrument.Stop();
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

// A pseudo-terminal stands for the serial device: the test holds the program's end of it.
TEST_F(InstrumentProgram, Answers_at_a_serial_device_and_finds_it_again_after_it_has_gone) {
    std::unique_ptr<simulator::Port> cable = simulator::OpenPseudoTerminal();
    const fs::path device = configHome / "device";
    fs::create_symlink(cable->Name(), device);
    InstrumentProcess instrument(configHome, {"--device", device.string()});
    EXPECT_EQ(instrument.Greeting(), "Instrument on " + device.string() + ", type help");
    EXPECT_EQ(RequestOver(*cable).size(), frameLength);

    fs::remove(device);
    cable.reset();
    EXPECT_EQ(instrument.ReadLine(), device.string() + " has gone; type replug when it is back");
    instrument.WriteInput("replug");
    EXPECT_EQ(instrument.ReadLine(),
              "Error: Opening " + device.string() + ": No such file or directory");
    cable = simulator::OpenPseudoTerminal();
    fs::create_symlink(cable->Name(), device);
    instrument.WriteInput("replug");
    EXPECT_EQ(instrument.ReadLine(), "The cable is in: " + device.string());
    EXPECT_EQ(RequestOver(*cable).size(), frameLength);
}

TEST_F(InstrumentProgram, What_goes_out_stands_in_the_log) {
    const fs::path log = configHome / "sent";
    InstrumentProcess instrument(configHome, {"--fast", "--log", log.string()});
    std::vector<std::uint8_t> sent = TestPort(instrument.Link()).Request();
    instrument.Command("fault half times 1");
    for (const std::uint8_t byte : TestPort(instrument.Link()).Request(frameLength / 2))
        sent.push_back(byte);
    std::ifstream file(log, std::ios::binary);
    const std::string logged((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(logged, std::string(sent.begin(), sent.end()));
    EXPECT_EQ(logged.size(), frameLength + frameLength / 2);
}

TEST_F(InstrumentProgram, Bad_arguments_are_told_and_nothing_is_left) {
    const auto unknown = InstrumentProcess::RunToEnd(configHome, {"--frob"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.output, "vantrel-instrument: \"--frob\" is no option; see --help\n");
    const auto electrode = InstrumentProcess::RunToEnd(configHome, {"--electrode", "1", "Xy"});
    EXPECT_EQ(electrode.exitCode, 2);
    const auto device =
        InstrumentProcess::RunToEnd(configHome, {"--device", "/dev/does-not-exist"});
    EXPECT_EQ(device.exitCode, 1);
    EXPECT_EQ(device.output,
              "vantrel-instrument: Opening /dev/does-not-exist: No such file or directory\n");
    const auto file = InstrumentProcess::RunToEnd(configHome, {"--device", "/dev/null"});
    EXPECT_EQ(file.exitCode, 1);
    EXPECT_EQ(file.output, "vantrel-instrument: /dev/null is no serial device\n");
    EXPECT_TRUE(fs::is_empty(configHome));
}

TEST_F(InstrumentProgram, Help_and_version_are_shown) {
    const auto help = InstrumentProcess::RunToEnd(configHome, {"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.starts_with("Usage: vantrel-instrument"));
    const auto version = InstrumentProcess::RunToEnd(configHome, {"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.output.starts_with("vantrel-instrument "));
}
