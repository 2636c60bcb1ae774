#include "base/Utf8.h"

#include <gtest/gtest.h>

namespace {

std::string Encoded(char32_t character) {
    std::string text;
    Utf8::Append(text, character);
    return text;
}

TEST(Utf8, Characters_of_each_length_are_written_and_read) {
    // The first and the last character of each length.
    EXPECT_EQ(Encoded(0x00), std::string(1, '\0'));
    EXPECT_EQ(Encoded(0x7F), "\x7F");
    EXPECT_EQ(Encoded(0x80), "\xC2\x80");
    EXPECT_EQ(Encoded(0x7FF), "\xDF\xBF");
    EXPECT_EQ(Encoded(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(Encoded(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(Encoded(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(Encoded(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, Every_character_comes_back_as_it_was) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        const std::string text = Encoded(code) + "x";
        const auto first = Utf8::First(text);
        ASSERT_EQ(first.code, code);
        ASSERT_EQ(first.length + 1, text.size());
        ASSERT_EQ(Utf8::LengthOf(text.front()), first.length);
    }
}

TEST(Utf8, What_is_not_well_formed_is_no_character) {
    for (const auto* text : {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3(", "\xE2\x82",
                             "\xE2(\xAC", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        EXPECT_EQ(Utf8::First(text).length, 0U) << text;
}

TEST(Utf8, A_byte_tells_how_long_its_character_is) {
    EXPECT_EQ(Utf8::LengthOf('a'), 1U);
    EXPECT_EQ(Utf8::LengthOf('\xC2'), 2U);
    EXPECT_EQ(Utf8::LengthOf('\xEF'), 3U);
    EXPECT_EQ(Utf8::LengthOf('\xF4'), 4U);
    for (const char lead : {'\x80', '\xBF', '\xC0', '\xC1', '\xF5', '\xFF'})
        EXPECT_EQ(Utf8::LengthOf(lead), 0U);
}

} // namespace
