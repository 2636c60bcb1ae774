#include "TransferFixture.h"

#include "base/RunTimeError.h"

namespace {

/// A screen that has read before starts again.
class StartOfReading : public TransferFixture {
protected:
    void AnswerNow() {
        link.serial.Arrive(frame);
        EXPECT_EQ(CommPort::State(), LinkState::answered);
        EXPECT_EQ(CommPort::Readings(), frameReadings);
    }
};

TEST_F(StartOfReading, A_request_that_is_unanswered_is_ended_and_another_goes_out_at_once) {
    CommPort::BeginReading();
    CommPort::EndReading();

    CommPort::BeginReading();

    EXPECT_EQ(link.Requests(), 2U);
    AnswerNow();
}

TEST_F(StartOfReading, The_time_out_begins_anew) {
    CommPort::BeginReading();
    CommPort::EndReading();
    link.timeout.SetInterval(std::chrono::milliseconds(1)); // what is left of the old one

    CommPort::BeginReading();

    EXPECT_EQ(link.timeout.Interval(), CommPort::transferTimeout);
    EXPECT_TRUE(link.timeout.Enabled());
}

TEST_F(StartOfReading, Bytes_of_the_earlier_reading_are_no_part_of_the_answer) {
    CommPort::BeginReading();
    link.serial.Arrive(Bytes(frame.begin(), frame.begin() + 20));

    CommPort::BeginReading();

    AnswerNow();
}

TEST_F(StartOfReading, A_failure_is_past) {
    CommPort::BeginReading();
    link.TimeoutTicks();
    ASSERT_TRUE(CommPort::HasFailed());

    CommPort::BeginReading();

    EXPECT_FALSE(CommPort::HasFailed());
    EXPECT_EQ(CommPort::State(), LinkState::waiting);
    AnswerNow();
}

TEST_F(StartOfReading, After_a_failure_nothing_is_polled_until_reading_starts_anew) {
    CommPort::BeginReading();
    AnswerNow();
    link.IntervalTicks();
    link.TimeoutTicks();

    EXPECT_FALSE(link.interval.Enabled());
    CommPort::tmrTransferInterval_Timer();
    CommPort::TransferOnce();
    EXPECT_EQ(link.Requests(), 2U);

    CommPort::BeginReading();
    EXPECT_EQ(link.Requests(), 3U);
}

TEST_F(StartOfReading, One_bad_frame_shows_one_message_though_more_are_sent) {
    CommPort::BeginReading();
    AnswerNow();
    ExpectBadFrameMessage();
    link.IntervalTicks();
    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
    CommPort::tmrTransferInterval_Timer();
    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    EXPECT_EQ(platform.dialogs.beeps, 1);
}

TEST_F(StartOfReading, One_that_meets_no_answer_closes_the_port_again) {
    CommPort::BeginReading();

    link.TimeoutTicks();

    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_EQ(CommPort::LinkText(), "COM1, 9600 bit/s: no connection");
}

TEST_F(StartOfReading, One_that_meets_a_bad_frame_closes_the_port_with_the_answer_to_its_message) {
    ExpectBadFrameMessage();
    platform.dialogs.whileMessageIsOpen = [this] { EXPECT_TRUE(link.serial.PortOpen()); };
    CommPort::BeginReading();

    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    EXPECT_FALSE(link.serial.PortOpen());
}

TEST_F(StartOfReading, A_failure_after_an_answer_leaves_the_port_open) {
    CommPort::BeginReading();
    AnswerNow();
    link.IntervalTicks();

    link.TimeoutTicks();

    EXPECT_TRUE(link.serial.PortOpen());
}

TEST_F(StartOfReading, Opens_the_device_that_the_name_stands_for_at_that_moment) {
    CommPort::BeginReading();
    link.TimeoutTicks(); // the name has fallen back to another device, which is silent
    CommPort::EndReading();
    link.serial.device = "second";

    CommPort::BeginReading();

    EXPECT_FALSE(link.serial.DeviceChanged());
    EXPECT_TRUE(CommPort::PortOK());
    AnswerNow();
}

TEST_F(StartOfReading, Leaves_another_device_though_it_is_open_and_has_answered) {
    CommPort::BeginReading();
    AnswerNow();
    CommPort::EndReading();
    link.serial.device = "second";

    CommPort::BeginReading();

    EXPECT_EQ(link.serial.opened.size(), 2U);
    EXPECT_FALSE(link.serial.DeviceChanged());
    EXPECT_EQ(link.serial.RThreshold(), 48);
}

TEST_F(StartOfReading, Leaves_a_port_alone_that_is_open_on_the_right_device) {
    CommPort::BeginReading();
    AnswerNow();
    CommPort::EndReading();

    CommPort::BeginReading();

    EXPECT_EQ(link.serial.opened.size(), 1U) << "the line would be dropped for nothing";
}

// ---- A screen that goes on after a failure -----------------------------------------------------

class GoingOn : public StartOfReading {
protected:
    void SetUp() override {
        StartOfReading::SetUp();
        CommPort::GoOnAfterFailure(true);
        CommPort::BeginReading();
        AnswerNow();
    }
};

TEST_F(GoingOn, A_time_out_loses_the_link_and_polling_goes_on_until_the_instrument_answers_again) {
    link.IntervalTicks();
    link.TimeoutTicks();
    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_FALSE(CommPort::HasFailed());
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());

    link.IntervalTicks();
    link.TimeoutTicks();
    EXPECT_TRUE(CommPort::IsLost());
    link.IntervalTicks();
    AnswerNow();

    EXPECT_FALSE(CommPort::IsLost());
    EXPECT_EQ(link.Requests(), 4U);
}

TEST_F(GoingOn, A_bad_frame_is_told_in_the_status_and_opens_no_box) {
    link.IntervalTicks();
    link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));

    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_EQ(link.status, std::string("Data transmission uncompleted: ") + moment);
    EXPECT_EQ(platform.dialogs.beeps, 0);
}

TEST_F(GoingOn, A_port_that_has_gone_is_opened_again_when_it_is_back) {
    link.serial.Unplug();
    EXPECT_TRUE(CommPort::IsLost());
    link.IntervalTicks();
    EXPECT_FALSE(link.serial.PortOpen());

    link.serial.ports.insert(1);
    link.IntervalTicks();

    EXPECT_EQ(link.serial.RThreshold(), 48);
    AnswerNow();
    EXPECT_FALSE(CommPort::IsLost());
}

TEST_F(GoingOn, A_frame_that_comes_by_itself_ends_the_loss) {
    link.IntervalTicks();
    link.TimeoutTicks();

    AnswerNow();

    EXPECT_FALSE(CommPort::IsLost());
}

TEST_F(GoingOn, Given_up_while_the_link_is_lost_it_has_failed) {
    link.IntervalTicks();
    link.TimeoutTicks();
    link.IntervalTicks();

    CommPort::GoOnAfterFailure(false);

    EXPECT_TRUE(CommPort::HasFailed());
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_FALSE(link.timeout.Enabled());
}

TEST_F(GoingOn, The_moment_of_the_last_good_frame_stays_while_the_link_is_lost) {
    EXPECT_EQ(CommPort::LastReading()->second, 33);
    platform.clock.now.second = 40;
    link.IntervalTicks();
    link.TimeoutTicks();
    EXPECT_EQ(CommPort::LastReading()->second, 33);

    link.IntervalTicks();
    AnswerNow();
    EXPECT_EQ(CommPort::LastReading()->second, 40);
}

TEST_F(GoingOn, A_loss_before_the_first_answer_is_no_gap_behind_an_earlier_reading) {
    link.IntervalTicks();
    link.TimeoutTicks();
    ASSERT_TRUE(CommPort::LastReadingBeforeLoss());
    EXPECT_EQ(CommPort::LastReadingBeforeLoss()->second, 33);
    CommPort::EndReading();

    platform.clock.now.hour += 2;
    CommPort::BeginReading();
    link.TimeoutTicks();

    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_FALSE(CommPort::LastReadingBeforeLoss());
}

} // namespace
