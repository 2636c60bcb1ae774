#include "TransferFixture.h"

#include "base/RunTimeError.h"
#include "link/Link.h"

namespace {

/// Two things at once: what comes late, early, or while a message is open.
class TransferMeetings : public TransferFixture {
protected:
    void ReadOnce() {
        CommPort::BeginReading();
        link.serial.Arrive(frame);
        ASSERT_EQ(CommPort::State(), LinkState::answered);
    }

    /// The bytes come in, and nothing tells of them.
    void ArriveUntold(const Bytes& bytes) {
        const auto arrival = std::exchange(link.serial.OnArrival, nullptr);
        const auto receive = std::exchange(link.serial.OnComm, nullptr);
        link.serial.Arrive(bytes);
        link.serial.OnArrival = arrival;
        link.serial.OnComm = receive;
    }

    const Bytes bad = BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8});
};

Bytes FrameNumber(int n) {
    return FrameOf({10 * n, 0, 0, 0, 0, 0, 0, 0});
}

// ---- Timers ------------------------------------------------------------------------------------

TEST_F(TransferMeetings, Reading_begins_with_the_interval_that_is_chosen_and_has_it_run) {
    link.intervalValue = 5;
    CommPort::BeginReading();
    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(5));
    EXPECT_TRUE(link.interval.Enabled());
}

TEST_F(TransferMeetings, A_start_of_reading_begins_the_interval_anew_and_an_answer_does_not) {
    ReadOnce();
    const int starts = link.interval.starts;
    CommPort::BeginReading();
    EXPECT_EQ(link.interval.starts, starts + 1);
    link.serial.Arrive(frame);
    EXPECT_EQ(link.interval.starts, starts + 1);
}

TEST_F(TransferMeetings, A_late_tick_of_the_interval_asks_nothing_when_no_screen_reads) {
    ReadOnce();
    CommPort::EndReading();
    const auto requests = link.Requests();

    CommPort::tmrTransferInterval_Timer();

    EXPECT_EQ(link.Requests(), requests);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(TransferMeetings, Where_a_bad_frame_and_the_time_out_meet_the_bad_frame_is_told) {
    ExpectBadFrameMessage();
    CommPort::TransferOnce();
    ArriveUntold(bad);

    link.TimeoutTicks();

    EXPECT_EQ(link.status, std::string("Data transmission uncompleted: ") + moment);
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(TransferMeetings, An_answer_that_lies_in_the_input_when_the_request_is_out_counts) {
    link.serial.onOutput = [this] { ArriveUntold(frame); };
    CommPort::TransferOnce();
    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_FALSE(CommPort::Busy());
}

// ---- The end of reading, and a scan ------------------------------------------------------------

TEST_F(TransferMeetings, An_answer_of_which_a_half_has_come_when_reading_ends_counts) {
    CommPort::BeginReading();
    link.serial.Arrive(Bytes(frame.begin(), frame.begin() + 20));
    CommPort::EndReading();
    link.serial.Arrive(Bytes(frame.begin() + 20, frame.end()));
    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(TransferMeetings, A_frame_that_a_scan_has_cut_does_not_spoil_the_next) {
    ReadOnce();
    link.serial.Arrive(Glued({frame, {'+', '0', '1'}}));
    CommPort::ScanPorts();
    link.serial.Arrive(FrameNumber(5));
    EXPECT_EQ(CommPort::Readings()[0], 5.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(TransferMeetings, Observers_learn_that_reading_has_ended) {
    ReadOnce();
    std::string seen;
    const auto handle = CommPort::ObserveLink([&seen] { seen = CommPort::LinkText(); });
    CommPort::EndReading();
    EXPECT_EQ(seen, "COM1, 9600 bit/s: open");
}

TEST_F(TransferMeetings, Observers_learn_of_an_answer_that_nobody_asked_for_and_no_status_does) {
    CommPort::BeginReading();
    CommPort::ScanPorts(); // the request is forgotten
    std::string seen;
    const auto handle = CommPort::ObserveLink([&seen] { seen = CommPort::LinkText(); });

    link.serial.Arrive(frame);

    EXPECT_EQ(seen, "COM1, 9600 bit/s: the instrument answers");
    EXPECT_EQ(link.status, "") << "no transfer was asked for";
}

TEST_F(TransferMeetings, A_status_that_was_set_during_the_wait_stays) {
    CommPort::TransferOnce();
    CommPort::TheLink().status.Set("set meanwhile");
    link.serial.Arrive(frame);
    EXPECT_EQ(link.status, "set meanwhile");
}

TEST_F(TransferMeetings, To_go_on_chosen_again_while_the_link_is_lost_changes_nothing) {
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    link.TimeoutTicks();
    CommPort::GoOnAfterFailure(true);
    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_TRUE(link.interval.Enabled());
}

// ---- While the message about a bad frame is open -----------------------------------------------

TEST_F(TransferMeetings, A_message_that_cannot_be_shown_leaves_no_transfer_under_way) {
    ExpectBadFrameMessage();
    platform.dialogs.whileMessageIsOpen = [] { throw RunTimeError("no display"); };
    CommPort::TransferOnce();

    EXPECT_THROW(link.serial.Arrive(bad), RunTimeError);

    EXPECT_FALSE(CommPort::Busy());
    EXPECT_EQ(CommPort::State(), LinkState::failed);
}

TEST_F(TransferMeetings, A_single_transfer_that_meets_a_bad_frame_leaves_the_port_open) {
    ExpectBadFrameMessage();
    CommPort::TransferOnce();
    link.serial.Arrive(bad);
    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(TransferMeetings, The_controls_may_go_while_the_message_is_open) {
    ExpectBadFrameMessage();
    platform.dialogs.whileMessageIsOpen = [] { CommPort::Detach(); };
    ReadOnce();
    EXPECT_NO_THROW(link.serial.Arrive(bad));
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(TransferMeetings, What_the_input_lost_meanwhile_does_not_spoil_the_frames_behind) {
    ReadOnce();
    ExpectBadFrameMessage();
    platform.dialogs.whileMessageIsOpen = [this] { ArriveUntold(Bytes(300, '0')); };
    const auto cut = FrameNumber(3);
    link.serial.Arrive(Glued({bad, FrameNumber(2), Bytes(cut.begin(), cut.begin() + 24)}));

    // The other half of a later one: both halves together look like a frame.
    const auto gone = FrameNumber(9);
    ArriveUntold(Bytes(gone.end() - 24, gone.end()));
    CommPort::MSComm1_OnArrival();
    EXPECT_EQ(CommPort::Readings(), frameReadings);

    link.serial.Arrive(FrameNumber(10));
    EXPECT_EQ(CommPort::Readings()[0], 10.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

} // namespace
