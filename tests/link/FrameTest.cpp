#include "link/Frame.h"

#include "base/NumberText.h"
#include "support/FakeLink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

Frame::Bytes BytesOf(const std::vector<std::uint8_t>& frame) {
    Frame::Bytes bytes{};
    EXPECT_EQ(frame.size(), bytes.size());
    std::copy_n(frame.begin(), bytes.size(), bytes.begin());
    return bytes;
}

/// A frame whose first field is `field` (6 bytes) and whose other values are +1.0.
float FirstValueOf(const std::string& field) {
    auto frame = BytesOf(FrameOf({10, 10, 10, 10, 10, 10, 10, 10}));
    EXPECT_EQ(field.size(), Frame::fieldLength);
    std::copy(field.begin(), field.end(), frame.begin());
    const auto values = Frame::Decode(frame);
    for (std::size_t k = 1; k < values.size(); ++k)
        EXPECT_EQ(values[k], 1.0F) << "value " << k << " must not suffer";
    return values[0];
}

TEST(Frame, Sign_bytes_decode_to_plus_and_minus) {
    EXPECT_EQ(Frame::DecodeHexPair("2B"), "+");
    EXPECT_EQ(Frame::DecodeHexPair("2D"), "-");
}

TEST(Frame, Digit_bytes_30_to_39_decode_to_the_ten_digits) {
    const std::string digits = "0123456789";
    for (const char digit : digits)
        EXPECT_EQ(Frame::DecodeHexPair(std::string("3") + digit), std::string(1, digit));
}

TEST(Frame, The_hexadecimal_text_without_leading_zero_decodes_to_TAB_and_EOT) {
    EXPECT_EQ(Frame::DecodeHexPair("9"), "\t");
    EXPECT_EQ(Frame::DecodeHexPair("4"), "[EOT]");
    EXPECT_EQ(Frame::DecodeHexPair("09"), "Error");
    EXPECT_EQ(Frame::DecodeHexPair("04"), "Error");
}

TEST(Frame, Any_other_text_decodes_to_Error) {
    for (const auto* text : {"", "0", "3", "3A", "3F", "2C", "2b", "FF", "301", " 30", "A"})
        EXPECT_EQ(Frame::DecodeHexPair(text), "Error") << text;
}

TEST(Frame, Plus_0123_TAB_minus_0456_TAB_decodes_to_12_3_and_minus_45_6) {
    const std::string text = "+0123\t-0456\t+0000\t+0000\t+0000\t+0000\t+0000\t+0000\x04";
    const auto values = Frame::Decode(BytesOf({text.begin(), text.end()}));

    EXPECT_EQ(values[0], 12.3F);
    EXPECT_EQ(values[1], -45.6F);
}

TEST(Frame, All_eight_values_come_in_frame_order) {
    const auto values = Frame::Decode(BytesOf(FrameOf({1, -2, 30, -40, 500, -600, 7000, -9999})));

    EXPECT_EQ(values, (Frame::Values{0.1F, -0.2F, 3.0F, -4.0F, 50.0F, -60.0F, 700.0F, -999.9F}));
}

TEST(Frame, Every_value_that_four_digits_can_hold_is_its_tenths_to_the_last_bit) {
    for (int tenths = -9999; tenths <= 9999; ++tenths) {
        const auto values = Frame::Decode(BytesOf(FrameOf({tenths, 0, 0, 0, 0, 0, 0, tenths})));
        const auto expected = static_cast<float>(tenths / 10.0);
        ASSERT_EQ(values.front(), expected) << tenths;
        ASSERT_EQ(values.back(), expected) << tenths;
    }
}

TEST(Frame, Minus_zero_decodes_to_a_plain_zero) {
    const auto value = FirstValueOf("-0000\t");

    EXPECT_EQ(value, 0.0F);
    EXPECT_FALSE(std::signbit(value));
}

TEST(Frame, A_foreign_byte_in_the_first_digit_makes_the_value_zero) {
    EXPECT_EQ(FirstValueOf("+x123\t"), 0.0F);
}

TEST(Frame, A_foreign_byte_in_a_later_digit_keeps_the_digits_before_it) {
    EXPECT_EQ(FirstValueOf("+1x23\t"), 0.1F);
    EXPECT_EQ(FirstValueOf("-12x3\t"), -1.2F);
    EXPECT_EQ(FirstValueOf("+123x\t"), 12.3F);
}

TEST(Frame, EOT_among_the_digits_ends_the_number) {
    EXPECT_EQ(FirstValueOf("+12\x04"
                           "3\t"),
              1.2F);
}

TEST(Frame, A_foreign_sign_byte_makes_the_value_zero) {
    EXPECT_EQ(FirstValueOf("x0123\t"), 0.0F); // "E012.3"
    EXPECT_EQ(FirstValueOf("\x04"
                           "0123\t"),
              0.0F); // "[012.3"
}

TEST(Frame, A_TAB_before_the_digits_is_a_blank) {
    EXPECT_EQ(FirstValueOf("+\t123\t"), 12.3F);
    EXPECT_EQ(FirstValueOf("\t0123\t"), 12.3F);
}

TEST(Frame, A_digit_in_the_place_of_the_sign_becomes_the_first_digit) {
    EXPECT_EQ(FirstValueOf("50123\t"), 5012.3F);
}

TEST(Frame, A_sign_among_the_digits_is_read_with_them) {
    EXPECT_EQ(FirstValueOf("++123\t"), 12.3F);
    EXPECT_EQ(FirstValueOf("+1-23\t"), 0.1F);
}

TEST(Frame, Separators_are_not_looked_at) {
    EXPECT_EQ(FirstValueOf("+0123x"), 12.3F);
    EXPECT_EQ(FirstValueOf("+0123\x04"), 12.3F);
}

TEST(Frame, In_a_tail_each_byte_stands_in_its_place) {
    const auto whole = FrameOf({1, -2, 30, -40, 500, -600, 7000, -9999});
    EXPECT_TRUE(Frame::IsTail(whole));
    EXPECT_TRUE(Frame::IsTail({}));
    for (std::size_t place = 0; place < whole.size(); ++place)
        for (int byte = 0; byte < 256; ++byte) {
            auto tail = whole;
            tail[place] = static_cast<std::uint8_t>(byte);
            const bool sign = byte == '+' || byte == '-';
            const bool digit = byte >= '0' && byte <= '9';
            const bool end = byte == (place == 47 ? 4 : '\t');
            EXPECT_EQ(Frame::IsTail(tail), place % 6 == 0 ? sign : (place % 6 == 5 ? end : digit))
                << place << ", byte " << byte;
        }
}

TEST(Frame, More_than_a_frame_is_no_tail) {
    auto longer = FrameOf({1, 2, 3, 4, 5, 6, 7, 8});
    longer.insert(longer.begin(), '\t');
    EXPECT_FALSE(Frame::IsTail(longer));
}

TEST(Frame, Only_EOT_as_the_last_byte_completes_a_frame) {
    auto frame = BytesOf(FrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_TRUE(Frame::IsComplete(frame));
    for (int last = 0; last < 256; ++last) {
        frame.back() = static_cast<std::uint8_t>(last);
        EXPECT_EQ(Frame::IsComplete(frame), last == 4) << last;
    }
}

} // namespace
