#include "link/CommPort.h"
#include "link/Link.h"

#include "base/RunTimeError.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using platform::CommTimeouts;

class CommPortTest : public testing::Test {
protected:
    fake::Platform platform;
    fake::Link link;
};

TEST_F(CommPortTest, An_empty_store_gives_9600_bit_per_second_on_COM1) {
    CommPort::LoadPortSettings();

    EXPECT_EQ(CommPort::BitRate(), 9600);
    EXPECT_EQ(CommPort::PortNumber(), 1);
}

TEST_F(CommPortTest, The_choice_is_stored_as_decimal_text_in_the_programs_own_place) {
    CommPort::TheLink().choice.BitRate = 115200;
    CommPort::TheLink().choice.PortNumber = 12;

    CommPort::SavePortSettings();

    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/BitRate"), "115200");
    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/PortNumber"), "12");
}

TEST_F(CommPortTest, The_stored_choice_comes_back) {
    platform.userStore.values = {{"CommPort/Startup/BitRate", "2400"},
                                 {"CommPort/Startup/PortNumber", "3"}};

    CommPort::LoadPortSettings();

    EXPECT_EQ(CommPort::BitRate(), 2400);
    EXPECT_EQ(CommPort::PortNumber(), 3);
}

TEST_F(CommPortTest, Stored_texts_are_read_leniently) {
    platform.userStore.values = {{"CommPort/Startup/BitRate", " 4800 bit/s"},
                                 {"CommPort/Startup/PortNumber", "COM3"}};

    CommPort::LoadPortSettings();

    EXPECT_EQ(CommPort::BitRate(), 4800);
    EXPECT_EQ(CommPort::PortNumber(), 0);
}

TEST_F(CommPortTest, A_stored_number_beyond_its_type_is_clamped) {
    platform.userStore.values = {{"CommPort/Startup/BitRate", "99999999999"},
                                 {"CommPort/Startup/PortNumber", "70000"}};

    CommPort::LoadPortSettings();

    EXPECT_EQ(CommPort::BitRate(), 2147483647);
    EXPECT_EQ(CommPort::PortNumber(), 32767);
}

TEST_F(CommPortTest, Opening_sets_line_format_buffer_and_no_receive_events) {
    link.serial.SetRThreshold(48);

    CommPort::OpenPort(9600, 2);

    EXPECT_EQ(link.serial.settings, "9600,N,8,1");
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(link.serial.bufferSize, 256U);
    EXPECT_EQ(link.serial.RThreshold(), 0);
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(CommPortTest, Opening_an_open_port_closes_it_first) {
    CommPort::OpenPort(9600, 2);
    CommPort::OpenPort(300, 3);

    EXPECT_EQ(link.serial.opened, (std::vector<int>{2, 3}));
    EXPECT_EQ(link.serial.settings, "300,N,8,1");
}

TEST_F(CommPortTest, A_bit_rate_that_is_none_is_refused_before_the_port_is_touched) {
    EXPECT_THROW(CommPort::OpenPort(0, 2), RunTimeError);
    EXPECT_THROW(CommPort::OpenPort(-9600, 2), RunTimeError);
    EXPECT_TRUE(link.serial.opened.empty());
}

TEST_F(CommPortTest, Time_outs_per_byte_are_10000_by_the_bit_rate_to_the_nearest_ms) {
    const auto perByte = [](std::int32_t bitRate) { return TimeoutsFor(bitRate).readInterval; };
    EXPECT_EQ(perByte(300), 33U);
    EXPECT_EQ(perByte(1200), 8U);
    EXPECT_EQ(perByte(2400), 4U);
    EXPECT_EQ(perByte(4800), 2U);
    EXPECT_EQ(perByte(9600), 1U);
    EXPECT_EQ(perByte(19200), 1U);
    EXPECT_EQ(perByte(57600), 0U);
    EXPECT_EQ(perByte(115200), 0U);
}

TEST_F(CommPortTest, Time_outs_round_ties_to_the_even_number) {
    EXPECT_EQ(TimeoutsFor(4000).readInterval, 2U);  // 2.5
    EXPECT_EQ(TimeoutsFor(20000).readInterval, 0U); // 0.5
    EXPECT_EQ(TimeoutsFor(800).readInterval, 12U);  // 12.5
    EXPECT_EQ(TimeoutsFor(2147483647).readInterval, 0U);
    EXPECT_EQ(TimeoutsFor(1).readInterval, 10000U);
}

TEST_F(CommPortTest, Time_outs_take_the_same_time_per_byte_and_1000_ms_beside_it) {
    EXPECT_EQ(TimeoutsFor(1200), (CommTimeouts{8, 8, 1000, 8, 1000}));
    EXPECT_EQ(TimeoutsFor(115200), (CommTimeouts{0, 0, 1000, 0, 1000}));
}

TEST_F(CommPortTest, Time_outs_are_set_on_an_open_port_only) {
    CommPort::TheLink().choice.BitRate = 300;
    CommPort::SetPortTimeouts();
    EXPECT_EQ(link.serial.timeoutsSet, 0);

    CommPort::OpenPort(300, 1);
    CommPort::SetPortTimeouts();
    EXPECT_EQ(link.serial.timeouts, (CommTimeouts{33, 33, 1000, 33, 1000}));
}

TEST_F(CommPortTest, The_scan_offers_every_port_that_opens_and_no_other) {
    link.serial.ports = {2, 5, 16};

    CommPort::ScanPorts();

    EXPECT_EQ(link.portList, (std::vector<std::string>{"COM2", "COM5", "COM16"}));
    for (int n = 1; n <= 16; ++n)
        EXPECT_EQ(CommPort::PortAvailable(n), n == 2 || n == 5 || n == 16);
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(CommPortTest, Port_17_and_above_are_never_tried_nor_offered) {
    link.serial.ports = {16, 17, 18};

    CommPort::ScanPorts();

    EXPECT_EQ(link.portList, (std::vector<std::string>{"COM16"}));
    EXPECT_EQ(link.serial.opened, (std::vector<int>{16}));
}

TEST_F(CommPortTest, The_scan_absorbs_opening_errors_but_remembers_them) {
    link.serial.ports = {2};
    link.serial.openError = "Opening COM1: no permission";

    CommPort::ScanPorts();

    EXPECT_EQ(CommPort::PortProblem(1), "Opening COM1: no permission");
    EXPECT_EQ(CommPort::PortProblem(2), "");
    EXPECT_EQ(link.status, "");
}

TEST_F(CommPortTest, The_scan_reopens_the_port_that_was_open) {
    CommPort::TheLink().choice.PortNumber = 3;
    CommPort::OpenPort(9600, 3);

    CommPort::ScanPorts();

    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.CommPort(), 3);
    EXPECT_TRUE(CommPort::PortAvailable(3));
}

TEST_F(CommPortTest, The_scan_leaves_a_closed_port_closed_and_chosen) {
    link.serial.SetCommPort(4);

    CommPort::ScanPorts();

    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.CommPort(), 4);
}

TEST_F(CommPortTest, A_port_that_vanished_is_dropped_by_the_next_scan) {
    CommPort::ScanPorts();
    link.serial.ports = {1};

    CommPort::ScanPorts();

    EXPECT_EQ(link.portList, (std::vector<std::string>{"COM1"}));
}

TEST_F(CommPortTest, Start_up_opens_the_stored_port_and_selects_both_choices) {
    platform.userStore.values = {{"CommPort/Startup/BitRate", "1200"},
                                 {"CommPort/Startup/PortNumber", "2"}};
    CommPort::ScanPorts();
    CommPort::Readings().fill(7);

    CommPort::fncInitializeComPort();

    EXPECT_TRUE(CommPort::PortOK());
    EXPECT_EQ(link.serial.settings, "1200,N,8,1");
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(link.selectedBitRate, 1);
    EXPECT_EQ(link.selectedPort, 1);
    EXPECT_EQ(link.serial.timeouts, (CommTimeouts{8, 8, 1000, 8, 1000}));
    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(1));
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_EQ(CommPort::Readings(), (std::array<float, cyclePositions>{}));
}

TEST_F(CommPortTest, Start_up_without_the_port_says_why_and_goes_on) {
    platform.userStore.values = {{"CommPort/Startup/PortNumber", "9"}};
    link.serial.openError = "Opening COM9: no such device";

    CommPort::fncInitializeComPort();

    EXPECT_FALSE(CommPort::PortOK());
    EXPECT_EQ(link.status, "Opening COM9: no such device");
    EXPECT_EQ(CommPort::State(), CommPort::LinkState::failed);
    EXPECT_EQ(link.serial.timeoutsSet, 0);
}

TEST_F(CommPortTest, A_choice_without_entry_leaves_the_selections_as_they_are) {
    CommPort::ScanPorts();
    CommPort::TheLink().choice.BitRate = 38400;
    CommPort::TheLink().choice.PortNumber = 11;

    CommPort::SetBitRateComboBox();
    CommPort::SetPortComboBox();

    EXPECT_EQ(link.selectedBitRate, -1);
    EXPECT_EQ(link.selectedPort, -1);
}

TEST_F(CommPortTest, Every_offered_bit_rate_is_found_and_38400_is_not_among_them) {
    EXPECT_EQ(std::count(offeredBitRates.begin(), offeredBitRates.end(), std::string_view("38400")),
              0);
    const std::array<std::int32_t, 8> rates = {300, 1200, 2400, 4800, 9600, 19200, 57600, 115200};
    for (int i = 0; i < 8; ++i) {
        CommPort::TheLink().choice.BitRate = rates.at(static_cast<std::size_t>(i));
        CommPort::SetBitRateComboBox();
        EXPECT_EQ(link.selectedBitRate, i);
    }
}

TEST_F(CommPortTest, Port_1_is_not_mistaken_for_port_11_or_16) {
    link.serial.ports = {1, 11, 16};
    CommPort::ScanPorts();
    CommPort::TheLink().choice.PortNumber = 16;

    CommPort::SetPortComboBox();

    EXPECT_EQ(link.selectedPort, 2);
}

TEST_F(CommPortTest, A_stored_port_number_of_0_asks_for_a_port) {
    CommPort::TheLink().choice.PortNumber = 0;

    CommPort::fncCheckForValidPort();

    EXPECT_EQ(link.status, "Please select a COM port.");
    EXPECT_FALSE(CommPort::PortOK());
}

TEST_F(CommPortTest, A_port_that_the_scan_did_not_find_is_called_unavailable) {
    link.serial.ports = {1};
    CommPort::ScanPorts();
    CommPort::TheLink().choice.PortNumber = 3;

    CommPort::fncCheckForValidPort();

    EXPECT_EQ(link.status, "COM3 is unavailable. Please select a different port.");
    EXPECT_FALSE(CommPort::PortOK());
}

TEST_F(CommPortTest, A_port_number_above_16_is_called_unavailable) {
    CommPort::TheLink().choice.PortNumber = 17;

    CommPort::fncCheckForValidPort();

    EXPECT_EQ(link.status, "COM17 is unavailable. Please select a different port.");
}

TEST_F(CommPortTest, An_available_port_is_opened_by_the_check) {
    CommPort::ScanPorts();
    CommPort::TheLink().choice.PortNumber = 2;

    CommPort::fncCheckForValidPort();

    EXPECT_TRUE(CommPort::PortOK());
    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_EQ(link.status, "");
}

TEST_F(CommPortTest, A_successful_test_says_so_without_a_blank_before_the_number) {
    CommPort::ScanPorts();

    CommPort::TestPort(19200, 2);

    EXPECT_EQ(link.status, "The test on Comm2 is successful.");
    EXPECT_EQ(link.serial.settings, "19200,N,8,1");
    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/PortNumber"), "2");
    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/BitRate"), "19200");
}

TEST_F(CommPortTest, A_choice_that_cannot_be_stored_is_in_force_and_the_test_says_so) {
    CommPort::ScanPorts();
    platform.userStore.writeError = "Saving BitRate: no permission";
    platform.dialogs.ExpectMessage(
        "The port settings hold for now, but could not be kept: Saving BitRate: no permission",
        platform::style::okOnly + platform::style::exclamation);

    CommPort::TestPort(19200, 2);

    EXPECT_EQ(link.status, "The test on Comm2 is successful.");
    EXPECT_EQ(CommPort::PortNumber(), 2);
    EXPECT_TRUE(platform.userStore.values.empty());
}

TEST_F(CommPortTest, A_store_that_cannot_be_written_is_told_at_the_end_and_the_port_is_closed) {
    CommPort::fncInitializeComPort();
    platform.userStore.writeError = "Saving BitRate: no permission";
    platform.dialogs.ExpectAnyMessage(platform::style::okOnly + platform::style::exclamation);

    CommPort::ClosePort();

    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(CommPortTest, After_a_successful_test_an_earlier_failure_is_past) {
    CommPort::ScanPorts();
    CommPort::fncInitializeComPort();
    CommPort::BeginReading();
    link.TimeoutTicks();
    CommPort::EndReading();
    ASSERT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: no connection");

    CommPort::TestPort(9600, 1);

    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: open");
}

TEST_F(CommPortTest, The_present_is_why_the_port_is_not_open_or_nothing) {
    link.serial.ports = {};
    link.serial.openError = "Opening COM1: no such device";
    CommPort::fncInitializeComPort();
    CommPort::TestPort(9600, 1);
    CommPort::ShowPresentStatus();
    EXPECT_EQ(link.status, "Opening COM1: no such device");

    link.serial.ports = {1};
    CommPort::ScanPorts();
    CommPort::TestPort(9600, 1);
    CommPort::ShowPresentStatus();
    EXPECT_EQ(link.status, "");
}

TEST_F(CommPortTest, A_failed_test_leaves_the_former_port_open_and_in_force) {
    link.serial.ports = {1};
    CommPort::ScanPorts();
    CommPort::fncInitializeComPort();

    CommPort::TestPort(300, 5);

    EXPECT_EQ(link.status, "COM5 is unavailable. Please select a different port.");
    EXPECT_EQ(CommPort::PortNumber(), 1);
    EXPECT_EQ(CommPort::BitRate(), 9600);
    EXPECT_TRUE(CommPort::PortOK());
    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_TRUE(platform.userStore.values.empty());
}

TEST_F(CommPortTest, A_port_that_vanished_since_the_scan_gives_its_reason_and_the_former_back) {
    CommPort::ScanPorts();
    CommPort::fncInitializeComPort();
    link.serial.ports = {1};
    link.serial.openError = "Opening COM2: no such device";

    CommPort::TestPort(9600, 2);

    EXPECT_EQ(link.status, "Opening COM2: no such device");
    EXPECT_EQ(link.serial.CommPort(), 1);
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(CommPortTest, Closing_on_exit_saves_the_choice_and_closes_the_port) {
    CommPort::fncInitializeComPort();
    CommPort::BeginReading();

    CommPort::ClosePort();

    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_FALSE(link.timeout.Enabled());
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/PortNumber"), "1");
}

TEST_F(CommPortTest, The_status_line_names_port_rate_and_what_the_instrument_does) {
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: not open");
    CommPort::fncInitializeComPort();
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: open");
    CommPort::BeginReading();
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: waiting for the instrument");
    link.serial.Arrive(FrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: the instrument answers");
    link.IntervalTicks();
    link.TimeoutTicks();
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: no connection");
}

TEST_F(CommPortTest, An_observer_is_told_of_changes_until_its_handle_goes) {
    int told = 0;
    auto handle = CommPort::ObserveLink([&told] { ++told; });
    CommPort::fncInitializeComPort();
    EXPECT_GT(told, 0);

    handle.reset();
    told = 0;
    CommPort::BeginReading();
    EXPECT_EQ(told, 0);
}

TEST_F(CommPortTest, An_observer_may_go_while_another_is_told) {
    int told = 0;
    std::shared_ptr<void> second;
    const auto first = CommPort::ObserveLink([&second] { second.reset(); });
    second = CommPort::ObserveLink([&told] { ++told; });

    CommPort::fncInitializeComPort();

    EXPECT_EQ(told, 0);
}

TEST(CommPortWithoutScreen, Reading_without_a_port_screen_fails_the_link_and_says_so) {
    const fake::Platform platform;

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), CommPort::LinkState::failed);
    EXPECT_EQ(CommPort::StatusText(), "The serial port is not set up");
    CommPort::EndReading();
    CommPort::ClosePort();
}

} // namespace
