#include "TransferFixture.h"

#include "link/InstrumentSearch.h"

namespace {

/// The port test and the search for the instrument, which ask outside any reading.
class PortQuestion : public TransferFixture {
protected:
    void SetUp() override {
        link.serial.ports = {2, 4};
        CommPort::ScanPorts();
    }
};

constexpr const char* answered = "The instrument answered: E1 12.3 mV, T1 -45.6, E2 3.0 mV, "
                                 "T2 -4.0, E3 50.0 mV, T3 -60.0, E4 700.0 mV, T4 -999.9";
constexpr const char* noAnswer = "No answer in 3 s: check cable, power and bit rate.";

TEST_F(PortQuestion, A_successful_test_asks_the_instrument_and_shows_its_eight_values) {
    CommPort::TestPort(9600, 2);
    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x02}}));

    link.serial.Arrive(frame);

    EXPECT_EQ(link.status, "The test on Comm2 is successful.");
    EXPECT_EQ(link.answer, answered);
    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(CommPort::Readings(), noReadings) << "no reading of a screen";
}

TEST_F(PortQuestion, Silence_is_told_after_three_seconds_with_what_to_look_at) {
    CommPort::TestPort(9600, 2);
    EXPECT_EQ(link.probe.Interval(), std::chrono::seconds(3));

    link.ProbeTicks();

    EXPECT_EQ(link.status, "The test on Comm2 is successful.");
    EXPECT_EQ(link.answer, noAnswer);
}

TEST_F(PortQuestion, Garbage_is_no_answer_and_opens_no_box) {
    CommPort::TestPort(9600, 2);
    link.serial.Arrive(Bytes(200, 0x55));
    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    link.ProbeTicks();

    EXPECT_EQ(link.answer, noAnswer);
    EXPECT_EQ(platform.dialogs.beeps, 0);
}

TEST_F(PortQuestion, Where_the_frame_and_the_end_of_the_wait_meet_the_frame_counts) {
    CommPort::TestPort(9600, 2);
    link.serial.OnArrival = nullptr;
    link.serial.Arrive(frame);

    link.ProbeTicks();

    EXPECT_EQ(link.answer, answered);
}

TEST_F(PortQuestion, A_failed_test_asks_nobody) {
    CommPort::TestPort(9600, 3);

    EXPECT_EQ(link.Requests(), 0U);
    EXPECT_EQ(link.answer, "");
}

TEST_F(PortQuestion, A_screen_that_starts_to_read_meanwhile_has_the_line_for_itself) {
    CommPort::TestPort(9600, 2);

    CommPort::BeginReading();
    link.serial.Arrive(frame);

    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(link.answer, "");
    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(PortQuestion, The_port_screen_opened_again_shows_no_earlier_answer) {
    CommPort::TestPort(9600, 2);
    link.serial.Arrive(frame);

    CommPort::ShowPresentStatus();

    EXPECT_EQ(link.answer, "");
}

// ---- The search --------------------------------------------------------------------------------

class Search : public PortQuestion {
protected:
    void SetUp() override {
        PortQuestion::SetUp();
        CommPort::TestPort(1200, 2);
        link.serial.Arrive(frame);
        link.serial.opened.clear();
        link.serial.written.clear();
        platform.userStore.values.clear();
    }
};

TEST_F(Search, Tries_every_port_at_the_rate_in_force_and_then_at_every_other) {
    CommPort::FindInstrument();
    std::vector<std::string> steps;
    while (link.searching) {
        steps.push_back(link.status);
        link.ProbeTicks();
    }

    ASSERT_EQ(steps.size(), 16U);
    EXPECT_EQ(steps[0], "Trying COM2 at 1200 bit/s...");
    EXPECT_EQ(steps[1], "Trying COM2 at 300 bit/s...");
    EXPECT_EQ(steps[7], "Trying COM2 at 115200 bit/s...");
    EXPECT_EQ(steps[8], "Trying COM4 at 1200 bit/s...");
    EXPECT_EQ(link.Requests(), 16U);
}

TEST_F(Search, The_first_instrument_that_answers_is_chosen_kept_and_shown) {
    CommPort::FindInstrument();
    for (int i = 0; i < 11; ++i)
        link.ProbeTicks();
    ASSERT_EQ(link.status, "Trying COM4 at 4800 bit/s...");

    link.serial.Arrive(frame);

    EXPECT_FALSE(link.searching);
    EXPECT_EQ(link.status, "The instrument was found on COM4 at 4800 bit/s.");
    EXPECT_EQ(link.answer, answered);
    EXPECT_EQ(CommPort::PortNumber(), 4);
    EXPECT_EQ(CommPort::BitRate(), 4800);
    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.settings, "4800,N,8,1");
    EXPECT_EQ(platform.userStore.values.at("CommPort/Startup/PortNumber"), "4");
    EXPECT_EQ(CommPort::LinkText(), "COM4, 4800 bit/s: open");
}

TEST_F(Search, Without_an_instrument_the_former_port_is_open_again) {
    CommPort::FindInstrument();
    while (link.searching)
        link.ProbeTicks();

    EXPECT_EQ(link.status, "No instrument answered on any port.");
    EXPECT_EQ(CommPort::PortNumber(), 2);
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_TRUE(link.serial.PortOpen());
    EXPECT_EQ(link.serial.settings, "1200,N,8,1");
    EXPECT_TRUE(platform.userStore.values.empty());
}

TEST_F(Search, Stopped_it_leaves_the_former_port_open) {
    CommPort::FindInstrument();
    link.ProbeTicks();

    CommPort::StopSearch();

    EXPECT_FALSE(link.searching);
    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(link.status, "The search was stopped.");
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(link.serial.settings, "1200,N,8,1");
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(Search, What_a_wrong_bit_rate_makes_of_a_frame_is_no_instrument) {
    CommPort::FindInstrument();
    auto garbled = Bytes(48, 0x80);
    garbled.back() = 0x04;

    link.serial.Arrive(garbled);

    EXPECT_TRUE(link.searching);
}

TEST_F(Search, Waits_for_a_whole_frame_at_each_speed) {
    EXPECT_EQ(InstrumentSearch::WaitAt(300), std::chrono::milliseconds(500 + 1633));
    EXPECT_EQ(InstrumentSearch::WaitAt(115200), std::chrono::milliseconds(500 + 4));
}

TEST_F(Search, Does_nothing_while_a_screen_reads) {
    CommPort::BeginReading();
    const auto requests = link.Requests();

    CommPort::FindInstrument();

    EXPECT_FALSE(link.searching);
    EXPECT_EQ(link.Requests(), requests);
}

TEST_F(Search, A_screen_that_starts_to_read_ends_it_and_reads_the_port_in_force) {
    CommPort::FindInstrument();
    for (int i = 0; i < 9; ++i)
        link.ProbeTicks();

    CommPort::BeginReading();
    link.serial.Arrive(frame);

    EXPECT_FALSE(link.searching);
    EXPECT_EQ(link.serial.CommPort(), 2);
    EXPECT_EQ(link.serial.settings, "1200,N,8,1");
    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

} // namespace
