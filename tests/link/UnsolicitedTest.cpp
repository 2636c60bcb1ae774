#include "link/CommPort.h"

#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using CommPort::LinkState;
using Bytes = std::vector<std::uint8_t>;
using platform::SerialControl;

constexpr int boxStyle = platform::style::okOnly + platform::style::exclamation;

/// A frame whose first value is n.0.
Bytes FrameNumber(int n) {
    return FrameOf({10 * n, 0, 0, 0, 0, 0, 0, 0});
}

/// A screen reads, its first request has been answered, the link is idle.
class Unsolicited : public testing::Test {
protected:
    void SetUp() override {
        CommPort::fncInitializeComPort();
        CommPort::BeginReading();
        link.serial.Arrive(FrameNumber(1));
        EXPECT_EQ(CommPort::Readings()[0], 1.0F);
    }

    void ExpectBadFrameMessage() {
        platform.dialogs.ExpectMessage("Data transmission uncompleted: 07.Mar.2003 14:05:33",
                                       boxStyle);
    }

    fake::Platform platform;
    fake::Link link;
};

TEST_F(Unsolicited, The_receive_threshold_is_48_while_a_screen_reads_and_0_otherwise) {
    EXPECT_EQ(link.serial.RThreshold(), 48);
    CommPort::EndReading();
    EXPECT_EQ(link.serial.RThreshold(), 0);
}

TEST_F(Unsolicited, A_frame_that_nobody_asked_for_is_decoded) {
    link.serial.Arrive(FrameNumber(2));

    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_EQ(link.serial.RThreshold(), 48);
}

TEST_F(Unsolicited, It_is_decoded_byte_by_byte_too) {
    for (const auto byte : FrameNumber(2))
        link.serial.Arrive(Bytes{byte});

    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
}

TEST_F(Unsolicited, Two_frames_glued_together_are_both_taken_and_the_later_one_stays) {
    link.serial.Arrive(Glued({FrameNumber(2), FrameNumber(3)}));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
}

TEST_F(Unsolicited, A_frame_and_a_half_and_the_other_half_are_two_frames) {
    const auto both = Glued({FrameNumber(2), FrameNumber(3)});
    link.serial.Arrive(Bytes(both.begin(), both.begin() + 70));
    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
    link.serial.Arrive(Bytes(both.begin() + 70, both.end()));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
}

TEST_F(Unsolicited, An_answer_and_a_frame_of_its_own_glued_together_are_both_taken) {
    link.IntervalTicks();
    link.serial.Arrive(Glued({FrameNumber(2), FrameNumber(3)}));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(Unsolicited, While_busy_a_receive_event_decodes_nothing) {
    link.IntervalTicks();
    ASSERT_TRUE(CommPort::Busy());
    link.serial.OnArrival = nullptr; // only the receive event comes
    link.serial.Arrive(FrameNumber(2));

    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
    EXPECT_TRUE(CommPort::Busy());
}

TEST_F(Unsolicited, Other_events_are_ignored) {
    const auto handler = std::exchange(link.serial.OnComm, nullptr);
    link.serial.Arrive(FrameNumber(2));

    for (const int code : {0, 1, 3, 4, 5, 6, 7, 1001, 1009})
        handler(static_cast<SerialControl::Event>(code));
    EXPECT_EQ(CommPort::Readings()[0], 1.0F);

    handler(SerialControl::Event::receive);
    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
}

/// While the program is held up, by a disk that stands still say, more comes than the input holds.
TEST_F(Unsolicited, An_input_that_ran_full_costs_the_frame_that_was_cut_and_no_other) {
    Bytes held;
    for (int n = 2; n <= 8; ++n) {
        const auto next = FrameNumber(n);
        held.insert(held.end(), next.begin(), next.end());
    }
    link.serial.Arrive(held); // 336 bytes, of which 256 find room
    EXPECT_EQ(CommPort::Readings()[0], 6.0F);

    link.serial.Arrive(FrameNumber(9));
    EXPECT_EQ(CommPort::Readings()[0], 9.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_FALSE(CommPort::HasFailed());
}

TEST_F(Unsolicited, A_request_drops_the_beginning_of_a_frame_that_came_before_it) {
    link.serial.Arrive(Bytes{'+', '0', '1'});
    link.IntervalTicks();
    link.serial.Arrive(FrameNumber(2));

    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
}

TEST_F(Unsolicited, A_frame_without_EOT_is_not_decoded_and_shows_its_message) {
    ExpectBadFrameMessage();

    link.serial.Arrive(BadFrameOf({990, 0, 0, 0, 0, 0, 0, 0}));

    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_EQ(link.status, "Data transmission uncompleted: 07.Mar.2003 14:05:33");
}

TEST_F(Unsolicited, After_a_bad_frame_the_stream_is_taken_up_behind_the_next_EOT) {
    ExpectBadFrameMessage();
    link.serial.Arrive(BadFrameOf({990, 0, 0, 0, 0, 0, 0, 0}));

    link.serial.Arrive(FrameNumber(2)); // belongs, up to its EOT, to what is dropped
    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
    link.serial.Arrive(FrameNumber(3));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(Unsolicited, The_same_holds_when_all_of_it_comes_in_one_piece) {
    ExpectBadFrameMessage();

    link.serial.Arrive(
        Glued({BadFrameOf({990, 0, 0, 0, 0, 0, 0, 0}), FrameNumber(2), FrameNumber(3)}));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
}

TEST_F(Unsolicited, Noise_before_a_frame_costs_that_frame_and_no_other) {
    ExpectBadFrameMessage();
    link.serial.Arrive(Bytes{0xFF, 0x00, 0x11});
    link.serial.Arrive(FrameNumber(2));
    EXPECT_EQ(CommPort::Readings()[0], 1.0F);

    link.serial.Arrive(FrameNumber(3));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
}

TEST_F(Unsolicited, Listening_from_the_middle_of_a_frame_loses_only_that_one_without_a_word) {
    const auto first = FrameNumber(2);
    link.serial.Arrive(Bytes(first.end() - 20, first.end()));

    link.serial.Arrive(FrameNumber(3));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(Unsolicited, A_frame_that_a_request_has_cut_anywhere_does_not_spoil_the_answer) {
    for (std::ptrdiff_t cut = 1; cut < 48; ++cut) {
        const auto own = FrameNumber(2);
        link.serial.Arrive(Bytes(own.begin(), own.begin() + cut));
        link.IntervalTicks();
        link.serial.Arrive(Bytes(own.begin() + cut, own.end()));
        EXPECT_TRUE(CommPort::Busy()) << cut;
        link.serial.Arrive(FrameNumber(static_cast<int>(cut)));

        ASSERT_EQ(CommPort::Readings()[0], static_cast<float>(cut));
        ASSERT_EQ(CommPort::State(), LinkState::answered) << cut;
        ASSERT_FALSE(CommPort::Busy()) << cut;
    }
    EXPECT_EQ(platform.dialogs.beeps, 0);
}

TEST_F(Unsolicited, A_tail_with_nothing_behind_it_ends_in_the_time_out_error) {
    const auto own = FrameNumber(2);
    link.IntervalTicks();
    link.serial.Arrive(Bytes(own.end() - 20, own.end()));
    link.TimeoutTicks();

    EXPECT_EQ(CommPort::StatusText().substr(0, 33), "Data transmission Timeout Error: ");
    EXPECT_EQ(CommPort::State(), LinkState::failed);
}

TEST_F(Unsolicited, A_stream_of_garbage_shows_one_message_not_one_a_frame) {
    ExpectBadFrameMessage();

    for (int i = 0; i < 100; ++i)
        link.serial.Arrive(Bytes(48, i % 2 == 0 ? 0x55 : 0x04));

    EXPECT_EQ(platform.dialogs.beeps, 1);
}

TEST_F(Unsolicited, A_polled_frame_that_starts_with_noise_fails_and_the_next_request_is_clean) {
    ExpectBadFrameMessage();
    link.IntervalTicks();
    link.serial.Arrive(Glued({{0x00, 0x7F, 0xFF}, FrameNumber(2)}));
    EXPECT_EQ(CommPort::State(), LinkState::failed);

    CommPort::BeginReading();
    link.serial.Arrive(FrameNumber(3));

    EXPECT_EQ(CommPort::Readings()[0], 3.0F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(Unsolicited, Nothing_is_decoded_once_no_screen_reads) {
    CommPort::EndReading();

    link.serial.Arrive(FrameNumber(2));

    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
}

} // namespace
