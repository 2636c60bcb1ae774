#include "link/FrameStream.h"

#include "support/FakeLink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Event = FrameStream::Event;

/// A frame whose first value is n tenths.
Bytes FrameNumber(int n) {
    return FrameOf({n, -1, 2, -3, 4, -5, 6, -9999});
}

Bytes Tail(const Bytes& frame, std::ptrdiff_t length) {
    return {frame.end() - length, frame.end()};
}

int NumberIn(const FrameStream& stream) {
    return static_cast<int>(Frame::Decode(stream.LastFrame())[0] * 10.0F + 0.5F);
}

/// The numbers of the frames that come out, -1 for a bad one.
std::vector<int> Out(FrameStream& stream) {
    std::vector<int> numbers;
    for (auto event = stream.Next(); event != Event::nothing; event = stream.Next())
        numbers.push_back(event == Event::frame ? NumberIn(stream) : -1);
    return numbers;
}

std::vector<int> Fed(const Bytes& bytes) {
    FrameStream stream;
    stream.Feed(bytes);
    return Out(stream);
}

TEST(FrameStreamTest, Needs_48_bytes) {
    FrameStream stream;
    stream.Feed(Bytes(47, '+'));
    EXPECT_EQ(stream.Next(), Event::nothing);
    EXPECT_TRUE(stream.IsUnderWay());
}

TEST(FrameStreamTest, Frames_one_behind_the_other_all_come_out) {
    EXPECT_EQ(Fed(Glued({FrameNumber(1), FrameNumber(2), FrameNumber(3)})),
              (std::vector<int>{1, 2, 3}));
}

TEST(FrameStreamTest, A_tail_of_any_length_is_dropped_without_a_word) {
    for (std::ptrdiff_t length = 1; length < 48; ++length)
        EXPECT_EQ(Fed(Glued({Tail(FrameNumber(7), length), FrameNumber(1), FrameNumber(2)})),
                  (std::vector<int>{1, 2}))
            << length;
}

TEST(FrameStreamTest, Two_tails_one_behind_the_other_are_both_dropped) {
    EXPECT_EQ(Fed(Glued({Tail(FrameNumber(7), 30), Tail(FrameNumber(8), 5), FrameNumber(1)})),
              (std::vector<int>{1}));
}

TEST(FrameStreamTest, A_tail_with_one_foreign_byte_is_no_tail) {
    for (std::size_t place = 0; place < 19; ++place) {
        auto tail = Tail(FrameNumber(7), 20);
        tail[place] = '?';
        EXPECT_EQ(Fed(Glued({tail, FrameNumber(1), FrameNumber(2)})), (std::vector<int>{-1, 1, 2}))
            << place;
    }
}

TEST(FrameStreamTest, Bytes_without_EOT_are_a_bad_frame_and_cost_the_next_as_far_as_its_EOT) {
    EXPECT_EQ(Fed(Glued({Bytes(48, 'U'), FrameNumber(1), FrameNumber(2)})),
              (std::vector<int>{-1, 2}));
}

TEST(FrameStreamTest, A_frame_that_lacks_its_EOT_alone_is_bad) {
    EXPECT_EQ(Fed(Glued({BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}), FrameNumber(1), FrameNumber(2)})),
              (std::vector<int>{-1, 2}));
}

TEST(FrameStreamTest, What_bytes_were_lost_behind_is_dropped_and_so_is_the_tail_that_follows) {
    for (std::ptrdiff_t lost = 1; lost < 96; ++lost) { // of the second and the third frame
        const auto whole = Glued({FrameNumber(1), FrameNumber(2), FrameNumber(3), FrameNumber(4)});
        FrameStream stream;
        stream.Feed(Bytes(whole.begin(), whole.begin() + 48 + 16));
        stream.NoteGap();
        EXPECT_EQ(Out(stream), std::vector<int>{1}) << lost;
        EXPECT_FALSE(stream.IsUnderWay()) << lost;
        stream.Feed(
            Bytes(whole.begin() + std::min<std::ptrdiff_t>(48 + 16 + lost, 144), whole.end()));
        const auto rest = Out(stream);
        ASSERT_FALSE(rest.empty()) << lost;
        EXPECT_EQ(rest.back(), 4) << lost;
        EXPECT_EQ(std::count(rest.begin(), rest.end(), -1), 0) << lost;
    }
}

TEST(FrameStreamTest, Having_lost_step_it_goes_on_behind_the_next_EOT) {
    FrameStream stream;
    stream.LoseStep();
    EXPECT_TRUE(stream.IsUnderWay());
    stream.Feed(Glued({Bytes{'1', 0xFF}, FrameNumber(1), FrameNumber(2)}));
    EXPECT_EQ(Out(stream), (std::vector<int>{2}));
    EXPECT_FALSE(stream.IsUnderWay());
}

TEST(FrameStreamTest, Having_lost_step_it_forgets_the_frames_that_it_held) {
    FrameStream stream;
    stream.Feed(Glued({FrameNumber(1), FrameNumber(2)}));
    stream.LoseStep();
    EXPECT_EQ(stream.BytesSinceRestart(), 0U);
    EXPECT_EQ(Out(stream), std::vector<int>{});
    stream.Feed(Glued({Tail(FrameNumber(3), 7), FrameNumber(4)}));
    EXPECT_EQ(Out(stream), std::vector<int>{4});
}

TEST(FrameStreamTest, A_restart_forgets_all_bytes) {
    FrameStream stream;
    stream.Feed(Bytes{'+', '0', '1'});
    EXPECT_EQ(stream.BytesSinceRestart(), 3U);
    stream.Restart();
    EXPECT_EQ(stream.BytesSinceRestart(), 0U);
    EXPECT_FALSE(stream.IsUnderWay());
    stream.Feed(FrameNumber(1));
    EXPECT_EQ(Out(stream), (std::vector<int>{1}));
}

TEST(FrameStreamTest, How_the_bytes_are_cut_into_pieces_makes_no_difference) {
    constexpr unsigned seed = 48;
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int round = 0; round < 200; ++round) {
        Bytes all;
        for (int i = 0; i < 12; ++i) {
            const auto next = FrameNumber(i);
            const auto from = below(4) == 0 ? below(48) : 0;
            all.insert(all.end(), next.begin() + static_cast<std::ptrdiff_t>(from), next.end());
            if (below(5) == 0)
                all.push_back(static_cast<std::uint8_t>(below(256)));
        }
        FrameStream stream;
        std::vector<int> numbers;
        for (std::size_t at = 0; at < all.size();) {
            const auto piece = std::min(below(100) + 1, all.size() - at);
            stream.Feed(std::span(all).subspan(at, piece));
            const auto more = Out(stream);
            numbers.insert(numbers.end(), more.begin(), more.end());
            at += piece;
        }
        ASSERT_EQ(numbers, Fed(all)) << "seed " << seed << ", round " << round;
    }
}

} // namespace
