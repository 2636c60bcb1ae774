#include "TransferFixture.h"

#include "link/Link.h"

#include <memory>

namespace {

/// What begins and ends with the port: the screen that shows it, questions under way, and the
/// simulated instrument.
class LinkLife : public TransferFixture {
protected:
    void SetUp() override {
        link.serial.ports = {2, 4};
        CommPort::ScanPorts();
        CommPort::TestPort(9600, 2);
        link.serial.Arrive(frame);
    }

    std::string Stored(const std::string& key) const {
        return platform.userStore.values.at("CommPort/Startup/" + key);
    }
};

constexpr const char* asked = "The instrument is asked...";

// ---- The controls come and go ------------------------------------------------------------------

TEST_F(LinkLife, When_the_controls_go_the_port_is_closed_and_hears_nothing_more) {
    CommPort::BeginReading();
    ASSERT_TRUE(link.timeout.Enabled());

    CommPort::Detach();

    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_FALSE(CommPort::PortOK());
    EXPECT_FALSE(link.serial.OnComm);
    EXPECT_FALSE(link.serial.OnArrival);
    EXPECT_FALSE(link.timeout.Enabled() || link.interval.Enabled() || link.probe.Enabled());
    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: not open");
}

TEST_F(LinkLife, When_the_controls_go_a_question_under_way_ends) {
    CommPort::TestPort(9600, 4);
    ASSERT_TRUE(link.probe.Enabled());

    CommPort::Detach();

    EXPECT_FALSE(link.probe.Enabled());
}

TEST_F(LinkLife, When_the_controls_go_a_search_under_way_ends_without_a_step_more) {
    CommPort::FindInstrument();
    const auto opened = link.serial.opened.size();

    CommPort::Detach();

    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.opened.size(), opened);
}

TEST_F(LinkLife, A_search_that_went_with_the_controls_is_not_at_work_when_others_come) {
    CommPort::Controls controls;
    controls.MSComm1 = &link.serial;
    CommPort::FindInstrument();
    CommPort::Detach();
    CommPort::Attach(controls);

    CommPort::TheLink().status.Set("as it was");
    CommPort::StopSearch();

    EXPECT_EQ(CommPort::StatusText(), "as it was");
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(LinkLife, After_the_controls_have_gone_their_screen_is_told_nothing) {
    link.status = "the last words";
    CommPort::Detach();

    CommPort::TheLink().status.Set("to nobody");

    EXPECT_EQ(link.status, "the last words");
}

TEST_F(LinkLife, A_start_clears_readings_stops_the_interval_and_forgets_the_simulated_one) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    link.serial.Arrive(frame);
    CommPort::BeginReading();
    link.serial.Arrive(frame);
    CommPort::EndReading();
    ASSERT_EQ(CommPort::Readings(), frameReadings);
    link.interval.SetEnabled(true);
    link.interval.SetInterval(std::chrono::milliseconds(7));

    CommPort::fncInitializeComPort();

    EXPECT_EQ(CommPort::Readings(), noReadings);
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(1));
    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: open");
}

TEST_F(LinkLife, An_observer_that_has_gone_is_forgotten) {
    int told = 0;
    auto gone = CommPort::ObserveLink([&told] { ++told; });
    const auto stays = CommPort::ObserveLink([&told] { told += 100; });
    gone.reset();

    CommPort::TheLink().status.Set("a change");

    EXPECT_EQ(told, 100);
}

// ---- What else ends a question -----------------------------------------------------------------

TEST_F(LinkLife, Opening_scanning_and_closing_end_a_question_without_a_word) {
    const std::vector<std::function<void()>> acts = {
        [] { CommPort::OpenPort(9600, 2); }, [] { CommPort::ScanPorts(); },
        [] { CommPort::fncCheckForValidPort(); }, [] { CommPort::TransferOnce(); },
        [] { CommPort::ClosePort(); }};
    for (const auto& act : acts) {
        CommPort::TestPort(9600, 2);
        ASSERT_EQ(link.answer, asked);

        act();

        EXPECT_FALSE(link.probe.Enabled());
        EXPECT_EQ(link.answer, "");
    }
}

TEST_F(LinkLife, Opening_scanning_and_closing_end_a_search) {
    const std::vector<std::function<void()>> acts = {
        [] { CommPort::OpenPort(9600, 2); }, [] { CommPort::ScanPorts(); },
        [] { CommPort::TransferOnce(); }, [] { CommPort::ClosePort(); }};
    for (const auto& act : acts) {
        CommPort::FindInstrument();
        ASSERT_TRUE(link.searching);

        act();

        EXPECT_FALSE(link.searching);
        EXPECT_FALSE(link.probe.Enabled());
        CommPort::TestPort(9600, 2);
        link.serial.Arrive(frame);
    }
}

TEST_F(LinkLife, Opening_another_port_ends_the_request_that_is_unanswered) {
    CommPort::TransferOnce();
    ASSERT_TRUE(CommPort::Busy());

    CommPort::OpenPort(9600, 4);

    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(LinkLife, A_scan_ends_the_request_that_is_unanswered) {
    CommPort::TransferOnce();
    ASSERT_TRUE(CommPort::Busy());

    CommPort::ScanPorts();

    EXPECT_FALSE(CommPort::Busy());
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(LinkLife, On_exit_observers_learn_that_the_port_is_closed) {
    std::string seen;
    const auto handle = CommPort::ObserveLink([&seen] { seen = CommPort::LinkText(); });

    CommPort::ClosePort();

    EXPECT_EQ(seen, "COM2, 9600 bit/s: not open");
}

TEST_F(LinkLife, Search_and_question_are_for_the_port_screen_alone) {
    CommPort::Controls controls;
    controls.MSComm1 = &link.serial;
    CommPort::Attach(controls);
    const auto requests = link.Requests();

    CommPort::TestPort(9600, 2);
    CommPort::FindInstrument();

    EXPECT_EQ(link.Requests(), requests);
    EXPECT_EQ(CommPort::StatusText(), "The test on Comm2 is successful.");
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(LinkLife, A_search_from_a_closed_port_leaves_it_closed) {
    link.serial.SetPortOpen(false);
    CommPort::FindInstrument();
    CommPort::StopSearch();
    EXPECT_FALSE(link.serial.PortOpen());

    CommPort::FindInstrument();
    while (link.searching)
        link.ProbeTicks();
    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_EQ(link.status, "No instrument answered on any port.");
}

TEST_F(LinkLife, A_search_begun_anew_begins_with_the_first_port) {
    CommPort::FindInstrument();
    for (int i = 0; i < 9; ++i)
        link.ProbeTicks();
    ASSERT_EQ(link.status, "Trying COM4 at 300 bit/s...");
    CommPort::StopSearch();

    CommPort::FindInstrument();

    EXPECT_EQ(link.status, "Trying COM2 at 9600 bit/s...");
    int steps = 1;
    for (link.ProbeTicks(); link.searching; link.ProbeTicks())
        ++steps;
    EXPECT_EQ(steps, 16) << "two ports at eight rates";
}

TEST_F(LinkLife, A_search_tries_the_highest_port_and_none_above) {
    link.serial.ports = {16, 17};
    CommPort::FindInstrument();
    EXPECT_EQ(link.status, "Trying COM16 at 9600 bit/s...");
    for (int i = 0; i < 8; ++i)
        link.ProbeTicks();
    EXPECT_FALSE(link.searching);
}

TEST_F(LinkLife, A_port_that_goes_during_the_question_gives_no_answer) {
    link.serial.outputError = "Writing: the port has gone";

    CommPort::TestPort(9600, 2);

    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(link.answer, "No answer in 3 s: check cable, power and bit rate.");
}

TEST_F(LinkLife, What_lay_in_the_input_is_no_answer_to_a_question) {
    link.serial.OnArrival = nullptr; // nobody has looked at it yet
    link.serial.Arrive(frame);

    CommPort::TestPort(9600, 2);

    EXPECT_EQ(link.answer, asked);
    EXPECT_EQ(link.serial.InBufferCount(), 0U);
}

// ---- The simulated instrument ------------------------------------------------------------------

TEST_F(LinkLife, The_simulated_instrument_is_used_and_asked_and_the_store_keeps_the_choice) {
    ASSERT_TRUE(CommPort::UseSimulated(4));

    EXPECT_EQ(link.status, "The simulated instrument is COM4 until this program ends.");
    EXPECT_EQ(link.answer, asked);
    EXPECT_EQ(CommPort::LinkText(), "COM4 (simulated), 9600 bit/s: open");
    EXPECT_EQ(link.serial.CommPort(), 4);
    EXPECT_EQ(link.selectedPort, 1);
    EXPECT_EQ(Stored("PortNumber"), "2");

    CommPort::ClosePort();
    EXPECT_EQ(Stored("PortNumber"), "2");
}

TEST_F(LinkLife, The_simulated_instrument_is_found_by_a_scan_of_its_own) {
    link.serial.ports = {2, 4, 9}; // its port has just come
    EXPECT_TRUE(CommPort::UseSimulated(9));
    EXPECT_EQ(link.portList, (std::vector<std::string>{"COM2", "COM4", "COM9"}));
}

TEST_F(LinkLife, A_simulated_instrument_that_cannot_be_reached_leaves_the_former_port) {
    EXPECT_FALSE(CommPort::UseSimulated(9));

    EXPECT_EQ(link.status, "COM9 is unavailable. Please select a different port.");
    EXPECT_EQ(CommPort::PortNumber(), 2);
    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: open");
}

TEST_F(LinkLife, When_the_simulated_instrument_ends_the_former_port_is_in_use_again) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    ASSERT_TRUE(CommPort::UseSimulated(4)); // started a second time: the choice is still the user's

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::LinkText(), "COM2, 9600 bit/s: open");
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(link.selectedPort, 0);
    EXPECT_EQ(link.answer, "");
}

TEST_F(LinkLife, Where_none_is_in_use_its_end_changes_nothing) {
    const auto opened = link.serial.opened.size();

    CommPort::SimulatedEnded();

    EXPECT_EQ(link.serial.opened.size(), opened);
    EXPECT_EQ(CommPort::PortNumber(), 2);
}

TEST_F(LinkLife, A_screen_that_reads_keeps_the_simulated_port_when_it_ends) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    CommPort::BeginReading();

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::PortNumber(), 4);
}

TEST_F(LinkLife, A_screen_that_waits_for_a_lost_link_keeps_the_simulated_port_when_it_ends) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    link.serial.Unplug();
    ASSERT_TRUE(CommPort::IsLost());

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::PortNumber(), 4);
}

TEST_F(LinkLife, A_port_tested_and_kept_takes_the_simulated_ones_place_for_good) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    CommPort::TestPort(4800, 2);
    link.serial.Arrive(frame);

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::LinkText(), "COM2, 4800 bit/s: open");
    EXPECT_EQ(Stored("BitRate"), "4800");
}

TEST_F(LinkLife, A_search_that_finds_an_instrument_takes_the_simulated_ones_place_for_good) {
    ASSERT_TRUE(CommPort::UseSimulated(4));
    CommPort::FindInstrument();
    link.serial.Arrive(frame);
    ASSERT_EQ(link.status, "The instrument was found on COM2 at 9600 bit/s.");

    CommPort::SimulatedEnded();

    EXPECT_EQ(CommPort::PortNumber(), 2);
    EXPECT_EQ(link.serial.CommPort(), 2);
}

TEST_F(LinkLife, A_search_begun_anew_shows_no_earlier_answer) {
    ASSERT_NE(link.answer, "");
    CommPort::FindInstrument();
    EXPECT_EQ(link.answer, "");
}

} // namespace
