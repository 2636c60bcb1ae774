#include "simulator/Session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>

using namespace simulator;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t stx = 0x02;
constexpr std::uint8_t eot = 0x04;

/// An ideal instrument and a time that the test moves.
class SessionTest : public testing::Test {
protected:
    Session session{Instrument(Instrument::Nature::ideal, 1, Seconds(0)), 1};
    Seconds now{0};

    Frame Good() { return EncodeFrame(session.Measuring().Sample(now)); }

    void Receive(std::initializer_list<std::uint8_t> bytes) {
        session.Receive(std::span(bytes.begin(), bytes.size()), now);
    }

    Line::Due After(double seconds) {
        now += Seconds(seconds);
        return session.Advance(now);
    }

    Bytes Ask() {
        Receive({stx});
        return After(10).bytes;
    }

    void Set(FaultKind kind, double seconds = 0, std::optional<int> replies = {}) {
        session.SetFault({kind, Seconds(seconds), replies});
    }
};

Bytes AsBytes(const Frame& frame) {
    return {frame.begin(), frame.end()};
}

} // namespace

TEST_F(SessionTest, A_request_is_answered_by_one_frame) {
    EXPECT_EQ(Ask(), AsBytes(Good()));
    EXPECT_TRUE(After(10).bytes.empty());
}

TEST_F(SessionTest, Nothing_is_sent_unasked) {
    EXPECT_TRUE(After(1000).bytes.empty());
    EXPECT_FALSE(session.NextEvent().has_value());
}

// 48 bytes of 10 bits at 9600 bit/s: 50 ms, the first byte after 1.04 ms.
TEST_F(SessionTest, At_9600_a_frame_takes_50_ms) {
    Receive({stx});
    EXPECT_TRUE(After(0.001).bytes.empty());
    EXPECT_EQ(After(0.0001).bytes.size(), 1U);
    EXPECT_EQ(After(0.0488).bytes.size(), 46U);
    EXPECT_EQ(After(0.0002).bytes.size(), 1U);
}

// 480 bits: 1.6 s at 300 bit/s, 4.17 ms at 115200.
TEST_F(SessionTest, Every_speed_has_its_own_time) {
    session.Sending().SetBitRate(300);
    Receive({stx});
    EXPECT_EQ(After(1.599).bytes.size(), 47U);
    EXPECT_EQ(After(0.002).bytes.size(), 1U);
    session.Sending().SetBitRate(115200);
    Receive({stx});
    EXPECT_EQ(After(0.0041).bytes.size(), 47U);
    EXPECT_EQ(After(0.0001).bytes.size(), 1U);
}

TEST_F(SessionTest, Fast_sends_at_once) {
    session.Sending().SetFast(true);
    Receive({stx});
    EXPECT_EQ(After(0).bytes.size(), frameLength);
}

TEST_F(SessionTest, Requests_in_a_row_are_answered_in_a_row) {
    Receive({stx, stx, stx});
    EXPECT_EQ(After(0.1501).bytes.size(), 3 * frameLength);
}

TEST_F(SessionTest, A_flood_of_requests_does_not_grow_without_end) {
    for (int i = 0; i < 100000; ++i)
        Receive({stx});
    EXPECT_LE(session.Sending().Waiting(), 256 * frameLength);
}

TEST_F(SessionTest, A_select_is_taken_with_any_address_and_not_answered) {
    Receive({0x01, stx, 0x18, stx});
    EXPECT_TRUE(After(1).bytes.empty());
    EXPECT_EQ(Ask(), AsBytes(Good()));
}

TEST_F(SessionTest, A_broken_select_does_not_swallow_the_next_request) {
    Receive({0x01, 0x30, 0x31, 0x55, stx});
    EXPECT_EQ(After(1).bytes.size(), frameLength);
}

TEST_F(SessionTest, Stray_bytes_are_passed_over) {
    Receive({0x00, 0xFF, 0x41, eot});
    EXPECT_TRUE(After(1).bytes.empty());
}

TEST_F(SessionTest, A_cancel_stops_the_frame_under_way) {
    Receive({stx});
    const std::size_t sent = After(0.0251).bytes.size();
    EXPECT_EQ(sent, 24U);
    Receive({0x18});
    EXPECT_TRUE(After(1).bytes.empty());
    EXPECT_EQ(Ask().size(), frameLength);
}

TEST_F(SessionTest, A_pulled_cable_loses_the_frame_and_the_select_under_way) {
    Receive({stx, 0x01, 0x30});
    session.LineLost();
    EXPECT_TRUE(After(1).bytes.empty());
    EXPECT_EQ(Ask().size(), frameLength);
}

TEST_F(SessionTest, Unsolicited_frames_come_every_interval) {
    session.SetAutomatic(Seconds(2), now);
    EXPECT_EQ(session.NextEvent(), Seconds(2));
    EXPECT_TRUE(After(1.9).bytes.empty());
    After(0.1);
    EXPECT_EQ(After(0.06).bytes.size(), frameLength);
    EXPECT_EQ(session.NextEvent(), Seconds(4));
    session.SetAutomatic(std::nullopt, now);
    EXPECT_TRUE(After(100).bytes.empty());
}

TEST_F(SessionTest, Missed_unsolicited_frames_are_not_made_up_for) {
    session.Sending().SetFast(true);
    session.SetAutomatic(Seconds(1), now);
    EXPECT_EQ(After(1000).bytes.size(), frameLength);
    EXPECT_LE(After(0.5).bytes.size(), frameLength);
    EXPECT_TRUE(After(0.1).bytes.empty());
}

TEST_F(SessionTest, Silence_answers_nothing) {
    Set(FaultKind::silence);
    EXPECT_TRUE(Ask().empty());
    EXPECT_EQ(session.RequestsSeen(), 1U);
    EXPECT_EQ(session.FramesSent(), 0U);
}

TEST_F(SessionTest, Half_sends_the_first_24_bytes) {
    Set(FaultKind::half);
    Bytes expected = AsBytes(Good());
    expected.resize(24);
    EXPECT_EQ(Ask(), expected);
}

TEST_F(SessionTest, A_bad_end_has_48_bytes_and_a_tab_where_the_end_belongs) {
    Set(FaultKind::badEnd);
    Bytes expected = AsBytes(Good());
    expected.back() = 0x09;
    EXPECT_EQ(Ask(), expected);
}

TEST_F(SessionTest, Garbage_is_48_bytes_and_no_end_among_them) {
    Set(FaultKind::garbage);
    for (int i = 0; i < 100; ++i) {
        const Bytes bytes = Ask();
        ASSERT_EQ(bytes.size(), frameLength);
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), eot), 0);
    }
}

TEST_F(SessionTest, Noise_comes_before_a_good_frame) {
    Set(FaultKind::noise);
    const Bytes bytes = Ask();
    ASSERT_EQ(bytes.size(), frameLength + 5);
    EXPECT_EQ(Bytes(bytes.begin() + 5, bytes.end()), AsBytes(Good()));
}

TEST_F(SessionTest, Extra_comes_behind_a_good_frame) {
    Set(FaultKind::extra);
    Bytes bytes = Ask();
    ASSERT_EQ(bytes.size(), frameLength + 12);
    bytes.resize(frameLength);
    EXPECT_EQ(bytes, AsBytes(Good()));
}

TEST_F(SessionTest, Pieces_come_with_pauses_and_make_a_good_frame) {
    session.Sending().SetFast(true);
    Set(FaultKind::pieces, 0.5);
    const Bytes good = AsBytes(Good());
    Receive({stx});
    Bytes all;
    for (double wait : {0.0, 0.5, 0.5, 0.5}) {
        const Bytes piece = After(wait).bytes;
        EXPECT_EQ(piece.size(), 12U);
        all.insert(all.end(), piece.begin(), piece.end());
    }
    EXPECT_EQ(all, good);
}

TEST_F(SessionTest, A_delay_sends_a_good_frame_late) {
    session.Sending().SetFast(true);
    Set(FaultKind::delay, 2.5);
    Receive({stx});
    EXPECT_TRUE(After(2.4).bytes.empty());
    EXPECT_EQ(After(0.1).bytes, AsBytes(Good()));
}

TEST_F(SessionTest, The_unplug_fault_pulls_the_cable_behind_half_a_frame) {
    Set(FaultKind::unplug);
    Receive({stx});
    const Line::Due before = After(0.0249);
    EXPECT_EQ(before.bytes.size(), 23U);
    EXPECT_FALSE(before.unplug);
    const Line::Due last = After(0.0002);
    EXPECT_EQ(last.bytes.size(), 1U);
    EXPECT_TRUE(last.unplug);
}

TEST_F(SessionTest, A_counted_fault_ends_after_that_many_answers) {
    Set(FaultKind::silence, 0, 2);
    EXPECT_TRUE(Ask().empty());
    EXPECT_TRUE(Ask().empty());
    EXPECT_EQ(Ask().size(), frameLength);
    EXPECT_EQ(session.CurrentFault().kind, FaultKind::none);
}

TEST_F(SessionTest, An_uncounted_fault_stays_until_it_is_cleared) {
    Set(FaultKind::half);
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(Ask().size(), 24U);
    Set(FaultKind::none);
    EXPECT_EQ(Ask().size(), frameLength);
}
