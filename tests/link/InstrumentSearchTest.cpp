#include "TransferFixture.h"

#include "link/Link.h"

namespace {

/// What the search finds, and what meets it.
class InstrumentSearchTest : public TransferFixture {
protected:
    void SetUp() override {
        link.serial.ports = {2, 4};
        CommPort::ScanPorts();
        CommPort::TestPort(9600, 2);
        link.serial.Arrive(frame);
    }

    void TickUntil(const std::string& step) {
        while (link.searching && link.status != step)
            link.ProbeTicks();
        ASSERT_EQ(link.status, step);
    }
};

TEST_F(InstrumentSearchTest, It_begins_with_the_lowest_port_there_is) {
    link.serial.ports = {1};
    CommPort::FindInstrument();
    EXPECT_EQ(link.status, "Trying COM1 at 9600 bit/s...");
}

TEST_F(InstrumentSearchTest, A_port_that_goes_before_its_turn_is_passed_over) {
    CommPort::FindInstrument();
    link.serial.ports.erase(4);

    for (int i = 0; i < 8; ++i)
        link.ProbeTicks();

    EXPECT_FALSE(link.searching);
    EXPECT_EQ(link.status, "No instrument answered on any port.");
}

TEST_F(InstrumentSearchTest, Stopped_while_the_port_was_closed_it_asks_nobody_any_more) {
    link.serial.SetPortOpen(false);
    CommPort::FindInstrument();

    CommPort::StopSearch();

    EXPECT_FALSE(link.probe.Enabled());
}

TEST_F(InstrumentSearchTest, Begun_anew_where_no_port_is_left_it_ends_and_asks_nobody) {
    link.serial.SetPortOpen(false);
    CommPort::FindInstrument();
    auto& ports = CommPort::TheLink().port.PortAvailable;
    ports.fill(false);

    CommPort::TheLink().search.Start(9600);

    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_FALSE(link.searching);
}

TEST_F(InstrumentSearchTest, The_end_of_one_that_has_ended_already_changes_nothing) {
    CommPort::FindInstrument();
    link.serial.Arrive(frame);
    ASSERT_EQ(link.status, "The instrument was found on COM2 at 9600 bit/s.");

    CommPort::StopSearch(); // the screen goes

    EXPECT_EQ(link.status, "The instrument was found on COM2 at 9600 bit/s.");
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(InstrumentSearchTest, The_end_of_one_that_another_opening_has_ended_changes_nothing) {
    CommPort::FindInstrument();
    CommPort::OpenPort(9600, 4);
    link.status = "as it was";

    CommPort::StopSearch();

    EXPECT_EQ(link.status, "as it was");
    EXPECT_EQ(link.serial.CommPort(), 4);
}

TEST_F(InstrumentSearchTest, What_it_finds_is_selected_in_the_lists) {
    CommPort::FindInstrument();
    TickUntil("Trying COM4 at 1200 bit/s...");

    link.serial.Arrive(frame);

    EXPECT_EQ(link.selectedPort, 1);
    EXPECT_EQ(link.selectedBitRate, 1);
}

TEST_F(InstrumentSearchTest, What_it_finds_takes_the_simulated_ones_place_at_the_rate_found) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    CommPort::FindInstrument();
    TickUntil("Trying COM2 at 4800 bit/s...");
    link.serial.Arrive(frame);

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::LinkText(), "COM2, 4800 bit/s: open");
}

TEST_F(InstrumentSearchTest, With_an_instrument_found_an_earlier_failure_is_past) {
    CommPort::BeginReading();
    link.TimeoutTicks();
    CommPort::EndReading();
    ASSERT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: no connection");

    CommPort::FindInstrument();
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: open");
}

TEST_F(InstrumentSearchTest, A_scan_in_the_middle_opens_the_port_that_was_open_before) {
    CommPort::FindInstrument();
    link.ProbeTicks();

    CommPort::ScanPorts();

    EXPECT_FALSE(link.searching);
    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: open");
}

/// The screen's polling opens the chosen port again and again: what answers there is not what the
/// search has asked on another.
TEST_F(InstrumentSearchTest, While_a_screen_waits_for_a_lost_link_none_begins) {
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    link.TimeoutTicks();
    ASSERT_TRUE(CommPort::IsLost());

    CommPort::FindInstrument();

    EXPECT_FALSE(link.searching);
    EXPECT_FALSE(link.probe.Enabled());
}

} // namespace
