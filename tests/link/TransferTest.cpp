#include "TransferFixture.h"

namespace {

class Transfer : public TransferFixture {};

// ---- A polled transfer -----------------------------------------------------------------------

TEST_F(Transfer, A_frame_fills_the_first_eight_readings_and_leaves_the_others_0) {
    CommPort::TransferOnce();
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_EQ(link.status, std::string("Data transfer completed: ") + moment);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(Transfer, Starting_a_transfer_returns_at_once_with_the_time_out_running) {
    link.status = "old";

    CommPort::TransferOnce();

    EXPECT_TRUE(CommPort::Busy());
    EXPECT_EQ(link.status, "");
    EXPECT_TRUE(link.timeout.Enabled());
    EXPECT_EQ(link.timeout.Interval(), std::chrono::seconds(3));
    EXPECT_EQ(platform.desktop.eventPasses, 0);
}

TEST_F(Transfer, A_frame_byte_by_byte_gives_the_same_readings) {
    CommPort::TransferOnce();
    for (const auto byte : frame) {
        EXPECT_EQ(CommPort::Readings(), noReadings);
        link.serial.Arrive(Bytes{byte});
    }

    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(Transfer, A_frame_in_any_two_pieces_gives_the_same_readings) {
    for (std::ptrdiff_t cut = 1; cut < 48; ++cut) {
        CommPort::Readings().fill(0);
        CommPort::TransferOnce();
        link.serial.Arrive(Bytes(frame.begin(), frame.begin() + cut));
        EXPECT_TRUE(CommPort::Busy());
        link.serial.Arrive(Bytes(frame.begin() + cut, frame.end()));
        ASSERT_EQ(CommPort::Readings(), frameReadings) << "cut at " << cut;
    }
}

TEST_F(Transfer, An_answer_that_comes_before_the_request_returns_is_not_lost) {
    link.serial.onOutput = [this] { link.serial.Arrive(frame); };

    CommPort::TransferOnce();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(Transfer, Noise_from_before_the_request_does_not_spoil_the_answer) {
    link.serial.Arrive(Bytes{0xFF, 0x00, 0x04, '+'});

    CommPort::TransferOnce();
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(Transfer, Bytes_beyond_48_do_not_spoil_this_answer_nor_the_next) {
    CommPort::TransferOnce();
    link.serial.Arrive(Glued({frame, {'+', '0', '1'}}));
    EXPECT_EQ(CommPort::Readings(), frameReadings);

    CommPort::TransferOnce();
    link.serial.Arrive(FrameOf({10, 20, 30, 40, 50, 60, 70, 80}));
    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
}

TEST_F(Transfer, A_last_byte_TAB_is_rejected_with_its_message_and_the_same_status) {
    ExpectBadFrameMessage();
    CommPort::TransferOnce();

    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    EXPECT_EQ(CommPort::Readings(), noReadings);
    EXPECT_EQ(link.status, std::string("Data transmission uncompleted: ") + moment);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(Transfer, The_message_about_a_bad_frame_beeps_first) {
    ExpectBadFrameMessage();
    CommPort::TransferOnce();

    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    EXPECT_EQ(platform.dialogs.events, (std::vector<std::string>{"beep", "message"}));
}

TEST_F(Transfer, A_foreign_byte_inside_a_whole_frame_leaves_the_other_values) {
    auto disturbed = frame;
    disturbed[1] = 0xFF;
    CommPort::TransferOnce();

    link.serial.Arrive(disturbed);

    EXPECT_EQ(CommPort::Readings()[0], 0.0F);
    EXPECT_EQ(CommPort::Readings()[1], -45.6F);
}

// ---- Time-out --------------------------------------------------------------------------------

TEST_F(Transfer, Silence_is_called_not_responding_and_leaves_the_readings) {
    CommPort::TransferOnce();
    link.serial.Arrive(frame);
    CommPort::TransferOnce();

    link.TimeoutTicks();

    EXPECT_EQ(link.status, std::string("System not responding: ") + moment);
    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(CommPort::TimedOut());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(Transfer, A_part_of_a_frame_is_called_a_time_out_error_and_leaves_the_readings) {
    CommPort::TransferOnce();
    link.serial.Arrive(Bytes(frame.begin(), frame.begin() + 47));

    link.TimeoutTicks();

    EXPECT_EQ(link.status, std::string("Data transmission Timeout Error: ") + moment);
    EXPECT_EQ(CommPort::Readings(), noReadings);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(Transfer, Where_48_bytes_and_the_time_out_meet_the_frame_counts) {
    CommPort::TransferOnce();
    link.serial.OnArrival = nullptr; // the arrival is told after the time-out
    link.serial.Arrive(frame);

    link.TimeoutTicks();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_FALSE(CommPort::TimedOut());
}

TEST_F(Transfer, A_time_out_tick_without_a_transfer_does_nothing) {
    CommPort::tmrTimeout_Timer();

    EXPECT_EQ(link.status, "");
    EXPECT_EQ(CommPort::State(), LinkState::waiting);
}

TEST_F(Transfer, After_a_time_out_the_next_request_starts_clean) {
    CommPort::TransferOnce();
    link.serial.Arrive(Bytes(frame.begin(), frame.begin() + 20));
    link.TimeoutTicks();
    link.serial.Arrive(Bytes(frame.begin() + 20, frame.begin() + 30)); // the rest trickles in

    CommPort::TransferOnce();
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

// ---- Polling ---------------------------------------------------------------------------------

TEST_F(Transfer, Reading_sends_the_first_request_at_once_and_then_one_a_tick) {
    CommPort::BeginReading();
    EXPECT_EQ(link.Requests(), 1U);
    link.serial.Arrive(frame);

    link.IntervalTicks();

    EXPECT_EQ(link.Requests(), 2U);
    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(1));
}

TEST_F(Transfer, A_tick_during_a_transfer_sends_nothing) {
    CommPort::BeginReading();
    link.IntervalTicks();
    link.IntervalTicks();

    EXPECT_EQ(link.Requests(), 1U);
}

TEST_F(Transfer, Polling_stops_when_no_screen_reads_and_a_transfer_under_way_ends) {
    CommPort::BeginReading();
    CommPort::EndReading();
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_TRUE(CommPort::Busy());

    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(Transfer, Starting_to_read_clears_a_failure) {
    CommPort::BeginReading();
    link.TimeoutTicks();
    CommPort::EndReading();
    ASSERT_EQ(CommPort::State(), LinkState::failed);

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), LinkState::waiting);
    EXPECT_EQ(link.Requests(), 2U);
}

TEST_F(Transfer, The_interval_units_are_seconds_minutes_and_hours) {
    EXPECT_EQ(CommPort::TransferInterval(5, "seconds"), std::chrono::seconds(5));
    EXPECT_EQ(CommPort::TransferInterval(5, "Minutes"), std::chrono::minutes(5));
    EXPECT_EQ(CommPort::TransferInterval(5, "Hour(s)"), std::chrono::hours(5));
}

TEST_F(Transfer, An_interval_below_one_counts_as_one_and_an_unknown_unit_as_seconds) {
    EXPECT_EQ(CommPort::TransferInterval(0, "Minutes"), std::chrono::minutes(1));
    EXPECT_EQ(CommPort::TransferInterval(-3, "seconds"), std::chrono::seconds(1));
    EXPECT_EQ(CommPort::TransferInterval(2, "minutes"), std::chrono::seconds(2));
}

TEST_F(Transfer, An_interval_beyond_what_a_timer_can_hold_is_cut) {
    EXPECT_EQ(CommPort::TransferInterval(32767, "Hour(s)"), std::chrono::milliseconds(2147483647));
}

TEST_F(Transfer, Each_tick_reads_the_interval_and_its_unit_anew) {
    CommPort::BeginReading();
    link.intervalValue = 2;
    link.intervalUnit = "Minutes";

    link.IntervalTicks();

    EXPECT_EQ(link.interval.Interval(), std::chrono::minutes(2));
}

// ---- The port goes and comes back --------------------------------------------------------------

TEST_F(Transfer, A_port_that_goes_in_the_middle_of_a_frame_ends_the_transfer_at_once) {
    CommPort::BeginReading();
    link.serial.Arrive(Bytes(frame.begin(), frame.begin() + 20));

    link.serial.Unplug();

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_EQ(link.status, std::string("COM1 was lost: ") + moment);
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(CommPort::PortOK());
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(Transfer, After_the_port_has_gone_no_timer_runs) {
    CommPort::BeginReading();

    link.serial.Unplug();

    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(Transfer, A_port_that_is_back_is_reopened_by_starting_to_read) {
    CommPort::BeginReading();
    link.serial.Unplug();
    CommPort::EndReading();
    link.serial.ports.insert(1);

    CommPort::BeginReading();
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_TRUE(CommPort::PortOK());
    EXPECT_EQ(link.serial.RThreshold(), 48);
    EXPECT_EQ(link.serial.timeoutsSet, 2);
}

TEST_F(Transfer, A_port_that_is_still_away_fails_the_link_with_the_reason) {
    CommPort::BeginReading();
    link.serial.Unplug();
    CommPort::EndReading();
    link.serial.openError = "Opening COM1: /dev/ttyUSB0 is not connected";

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_EQ(link.status, "Opening COM1: /dev/ttyUSB0 is not connected");
    EXPECT_FALSE(link.interval.Enabled());
}

TEST_F(Transfer, A_request_that_cannot_be_written_fails_the_link_with_the_reason) {
    link.serial.outputError = "Writing to COM1: Input/output error";

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_EQ(link.status, "Writing to COM1: Input/output error");
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(Transfer, A_transfer_over_a_closed_port_says_that_it_is_not_open) {
    link.serial.SetPortOpen(false);

    CommPort::TransferOnce();

    EXPECT_EQ(link.status, std::string("COM1 is not open: ") + moment);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(Transfer, A_scan_in_the_middle_of_a_transfer_ends_it_without_a_message) {
    CommPort::BeginReading();

    CommPort::ScanPorts();

    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.timeout.Enabled());
    EXPECT_EQ(link.serial.RThreshold(), 48);
    link.IntervalTicks();
    EXPECT_EQ(link.Requests(), 2U);
}

} // namespace
