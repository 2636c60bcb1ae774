#include "TransferFixture.h"

#include "base/RunTimeError.h"
#include "link/Link.h"

namespace {

/// The port by itself, and which one is open when a choice changes, fails or goes.
class PortTest : public TransferFixture {
protected:
    Port& TheProgramsPort() const { return CommPort::TheLink().port; }
};

TEST_F(PortTest, Opening_asks_for_no_receive_events) {
    link.serial.SetRThreshold(48);
    TheProgramsPort().Open({9600, 2});
    EXPECT_EQ(link.serial.RThreshold(), 0);
}

TEST_F(PortTest, The_slowest_bit_rate_of_all_is_one) {
    EXPECT_NO_THROW(TheProgramsPort().OpenWithTimeouts({1, 2}));
    EXPECT_EQ(link.serial.timeouts.readInterval, 10000U);
}

TEST_F(PortTest, A_bit_rate_that_is_none_sets_no_time_outs) {
    const int before = link.serial.timeoutsSet;
    for (const int rate : {0, -300}) {
        CommPort::TheLink().choice.BitRate = rate;
        CommPort::SetPortTimeouts();
    }
    EXPECT_EQ(link.serial.timeoutsSet, before);
}

TEST_F(PortTest, A_scan_leaves_every_port_closed) {
    ASSERT_TRUE(link.serial.PortOpen());
    link.serial.ports = {};
    TheProgramsPort().Scan();
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(PortTest, A_scan_leaves_the_first_port_chosen_where_it_was) {
    link.serial.SetCommPort(1);
    TheProgramsPort().Scan();
    EXPECT_EQ(link.serial.CommPort(), 1);
}

TEST_F(PortTest, A_port_that_can_be_opened_again_has_no_problem_any_more) {
    link.serial.ports = {};
    CommPort::ScanPorts();
    ASSERT_NE(CommPort::PortProblem(3), "");
    link.serial.ports = {3};
    CommPort::ScanPorts();
    EXPECT_EQ(CommPort::PortProblem(3), "");
}

// ---- Which port is open ------------------------------------------------------------------------

TEST_F(PortTest, Reading_begins_on_the_chosen_port_though_another_is_open) {
    ASSERT_EQ(link.serial.CommPort(), 1);
    CommPort::TheLink().choice.PortNumber = 3;

    CommPort::BeginReading();

    EXPECT_EQ(link.serial.CommPort(), 3);
    EXPECT_EQ(link.serial.opened.back(), 3);
}

TEST_F(PortTest, A_port_that_cannot_be_opened_again_is_no_good_one) {
    ASSERT_TRUE(CommPort::PortOK());
    link.serial.device = "second"; // so that it is opened anew
    link.serial.ports = {};

    CommPort::BeginReading();

    EXPECT_FALSE(CommPort::PortOK());
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: not open");
}

TEST_F(PortTest, A_start_without_the_port_is_no_lost_connection) {
    platform.userStore.values = {{"CommPort/Startup/PortNumber", "9"}};
    CommPort::fncInitializeComPort();
    EXPECT_EQ(CommPort::LinkText(), "COM9, 9600 bit/s: not open");
}

TEST_F(PortTest, While_the_choice_is_no_port_none_counts_as_open) {
    CommPort::TheLink().choice.PortNumber = 0;
    CommPort::fncCheckForValidPort();
    EXPECT_EQ(CommPort::LinkText(), "COM0, 9600 bit/s: not open");
}

TEST_F(PortTest, Opened_while_a_screen_reads_it_takes_frames_that_come_by_themselves) {
    CommPort::BeginReading();
    link.serial.Arrive(frame);
    CommPort::OpenPort(9600, 4);
    EXPECT_EQ(link.serial.RThreshold(), 48);
}

TEST_F(PortTest, A_check_of_the_port_ends_the_request_that_is_unanswered) {
    CommPort::ScanPorts();
    CommPort::TransferOnce();
    ASSERT_TRUE(CommPort::Busy());
    CommPort::fncCheckForValidPort();
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(PortTest, Lost_after_it_was_open_it_does_not_tell_why_an_earlier_opening_failed) {
    link.serial.ports = {};
    CommPort::fncInitializeComPort();
    ASSERT_EQ(link.status, "Opening the port: denied");
    link.serial.ports = {1};
    CommPort::fncInitializeComPort();
    link.serial.Unplug();

    CommPort::ShowPresentStatus();

    EXPECT_EQ(link.status, "");
}

TEST_F(PortTest, The_present_is_no_failure_that_is_past) {
    CommPort::TransferOnce();
    link.TimeoutTicks();
    ASSERT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: no connection");

    CommPort::ShowPresentStatus();

    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: open");
}

// ---- The test of a choice ----------------------------------------------------------------------

TEST_F(PortTest, A_test_clears_the_status_of_an_earlier_one_before_it_says_its_own) {
    CommPort::ScanPorts();
    CommPort::TheLink().status.Set("of an earlier one");
    std::vector<std::string> shown;
    const auto handle =
        CommPort::ObserveLink([&shown] { shown.push_back(CommPort::StatusText()); });

    CommPort::TestPort(9600, 2);

    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front(), "");
    EXPECT_EQ(shown.back(), "The test on Comm2 is successful.");
}

TEST_F(PortTest, A_failed_test_opens_no_port_that_was_closed_before) {
    CommPort::ScanPorts();
    link.serial.SetPortOpen(false);
    CommPort::TestPort(9600, 9);
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(PortTest, A_failed_test_tells_its_own_reason_also_where_the_former_port_has_gone) {
    CommPort::ScanPorts();
    link.serial.ports = {};

    CommPort::TestPort(0, 2);

    EXPECT_EQ(link.status, "Opening COM2: a bit rate of 0 is not possible");
    EXPECT_FALSE(CommPort::PortOK());
}

TEST_F(PortTest, A_test_while_a_screen_reads_leaves_the_asking_to_the_screen) {
    CommPort::ScanPorts();
    CommPort::BeginReading();
    link.serial.Arrive(frame);

    CommPort::TestPort(9600, 4);

    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(link.answer, "");
}

TEST_F(PortTest, A_test_while_a_screen_waits_for_a_lost_link_leaves_the_asking_to_the_screen) {
    CommPort::ScanPorts();
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    link.TimeoutTicks();
    ASSERT_TRUE(CommPort::IsLost());

    CommPort::TestPort(9600, 4);

    EXPECT_FALSE(link.probe.Enabled());
    link.IntervalTicks();
    link.serial.Arrive(frame);
    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

// ---- The simulated instrument and reading ------------------------------------------------------

class SimulatedPort : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        ASSERT_TRUE(CommPort::UseSimulated(4));
    }
};

TEST_F(SimulatedPort, Ended_while_a_screen_read_it_is_given_up_when_the_port_screen_comes) {
    CommPort::BeginReading();
    CommPort::SimulatedEnded();
    ASSERT_EQ(CommPort::PortNumber(), 4);
    CommPort::EndReading();

    CommPort::ShowPresentStatus();

    EXPECT_EQ(CommPort::PortNumber(), 1);
    EXPECT_EQ(link.serial.CommPort(), 1);
}

TEST_F(SimulatedPort, While_it_runs_the_port_screen_leaves_it_in_use) {
    CommPort::ShowPresentStatus();
    EXPECT_EQ(CommPort::PortNumber(), 4);
}

TEST_F(SimulatedPort, Started_anew_after_an_end_while_a_screen_read_it_stays_in_use) {
    CommPort::BeginReading();
    CommPort::SimulatedEnded();
    CommPort::EndReading();
    ASSERT_TRUE(CommPort::UseSimulated(4));

    CommPort::ShowPresentStatus();

    EXPECT_EQ(CommPort::PortNumber(), 4);
}

} // namespace
