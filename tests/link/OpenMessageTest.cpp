#include "TransferFixture.h"

namespace {

class OpenMessage : public TransferFixture {
protected:
    void SetUp() override {
        TransferFixture::SetUp();
        CommPort::BeginReading();
    }

    void ReceiveBadFrameWhile(std::function<void()> steps) {
        ExpectBadFrameMessage();
        platform.dialogs.whileMessageIsOpen = std::move(steps);
        link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
        EXPECT_EQ(platform.dialogs.beeps, 1);
    }
};

TEST_F(OpenMessage, No_request_goes_out_until_it_is_answered) {
    ReceiveBadFrameWhile([this] {
        EXPECT_FALSE(link.interval.Enabled());
        CommPort::tmrTransferInterval_Timer(); // a tick that was under way already
        CommPort::TransferOnce();
        EXPECT_EQ(link.Requests(), 1U);
    });

    CommPort::BeginReading();
    EXPECT_EQ(link.Requests(), 2U);
}

TEST_F(OpenMessage, Screens_do_not_see_the_failure_before_the_answer) {
    ReceiveBadFrameWhile([] { EXPECT_EQ(CommPort::State(), LinkState::waiting); });

    EXPECT_EQ(CommPort::State(), LinkState::failed);
}

TEST_F(OpenMessage, Bad_frames_that_come_meanwhile_open_no_second_one) {
    ReceiveBadFrameWhile([this] {
        link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
        link.serial.Arrive(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
    });

    EXPECT_EQ(platform.dialogs.beeps, 1);
}

TEST_F(OpenMessage, The_transfer_is_busy_until_the_answer) {
    ReceiveBadFrameWhile([] { EXPECT_TRUE(CommPort::Busy()); });

    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(OpenMessage, A_port_that_goes_meanwhile_leaves_the_link_failed_and_closed) {
    ReceiveBadFrameWhile([this] { link.serial.Unplug(); });

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(OpenMessage, Reading_that_begins_meanwhile_on_a_port_that_is_away_has_failed_afterwards) {
    ReceiveBadFrameWhile([this] {
        link.serial.Unplug();
        CommPort::EndReading();
        CommPort::BeginReading();
        EXPECT_EQ(CommPort::State(), LinkState::waiting);
    });

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(OpenMessage, Reading_that_begins_meanwhile_gets_its_request_after_the_answer) {
    ReceiveBadFrameWhile([this] {
        CommPort::EndReading();
        CommPort::BeginReading();
        EXPECT_EQ(link.Requests(), 1U);
    });

    EXPECT_EQ(link.Requests(), 2U);
    EXPECT_EQ(CommPort::State(), LinkState::waiting);
}

TEST_F(OpenMessage, The_stream_that_overflowed_meanwhile_is_taken_up_behind_the_next_EOT) {
    link.serial.Arrive(FrameOf({0, 0, 0, 0, 0, 0, 0, 0})); // the start has succeeded
    link.IntervalTicks();
    ReceiveBadFrameWhile([this] {
        for (int i = 0; i < 20; ++i)
            link.serial.Arrive(frame);
    });
    link.serial.Arrive(FrameOf({1, 1, 1, 1, 1, 1, 1, 1})); // its start may be lost
    EXPECT_EQ(CommPort::Readings(), noReadings);
    link.serial.Arrive(frame);

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_EQ(platform.dialogs.beeps, 1);
}

} // namespace
