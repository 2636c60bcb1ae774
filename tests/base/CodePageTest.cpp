#include "base/CodePage.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string EveryByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

TEST(CodePage, Every_byte_has_a_character_and_comes_back_as_the_same_byte) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto back =
            CodePage::FromUnicode(CodePage::ToUnicode(static_cast<unsigned char>(byte)));
        ASSERT_TRUE(back) << byte;
        EXPECT_EQ(*back, byte);
    }
    EXPECT_EQ(CodePage::FromUtf8(CodePage::ToUtf8(EveryByte())), EveryByte());
}

TEST(CodePage, The_degree_sign_is_byte_176_and_the_euro_sign_byte_128) {
    EXPECT_EQ(CodePage::ToUtf8("25 \xB0"
                               "C"),
              "25 \xC2\xB0"
              "C");
    EXPECT_EQ(CodePage::FromUtf8("\xE2\x82\xAC"), "\x80");
}

TEST(CodePage, A_byte_without_a_character_stands_for_the_control_of_its_number) {
    for (const char c : std::string("\x81\x8D\x8F\x90\x9D")) {
        const auto byte = static_cast<unsigned char>(c);
        EXPECT_EQ(CodePage::ToUnicode(byte), byte);
    }
}

TEST(CodePage, A_character_that_the_code_page_lacks_is_refused) {
    EXPECT_FALSE(CodePage::FromUtf8("\xD0\x96"));            // a Cyrillic letter
    EXPECT_FALSE(CodePage::FromUtf8("ok \xF0\x9F\x98\x80")); // beyond the basic plane
    EXPECT_FALSE(CodePage::FromUnicode(0x80)); // the euro sign took the place of this control
}

TEST(CodePage, Malformed_UTF_8_is_refused) {
    for (const char* text : {"\x80", "a\xC3", "\xC0\x80", "\xE0\x80\x80", "\xE2\x82", "\xC3(",
                             "\xFF", "\xF8\x88\x80\x80\x80"})
        EXPECT_FALSE(CodePage::FromUtf8(text)) << text;
}

TEST(CodePage, A_path_goes_there_and_back) {
    const std::string text = "M\xE9thode \x80";
    EXPECT_EQ(CodePage::FromPath(CodePage::ToPath(text)), text);
    EXPECT_TRUE(CodePage::ToPath(text).u8string() == u8"Méthode €");
}

TEST(CodePage, A_path_with_a_foreign_letter_has_no_text) {
    EXPECT_FALSE(CodePage::FromPath(std::filesystem::path(u8"/home/Жанна/Data")));
}

TEST(CodePage, What_is_only_looked_at_has_a_question_mark_for_each_thing_that_it_cannot_show) {
    EXPECT_EQ(CodePage::Legible("\xC3\xA9 \xE2\x82\xAC"), "\xE9 \x80");
    EXPECT_EQ(CodePage::Legible("\xD0\x96\xF0\x9F\x98\x80."), "??.");
    EXPECT_EQ(CodePage::Legible("a\xE2\x82z\xFF"), "a??z?") << "each broken byte";
    EXPECT_EQ(CodePage::Legible("\xE0\x80\x80"), "???") << "an overlong form";
}

TEST(CodePage, A_message_names_a_path_with_question_marks_for_foreign_letters) {
    EXPECT_EQ(CodePage::NameOf(std::filesystem::path(u8"/Méthode/Жук.4ch")), "/M\xE9thode/???.4ch");
    EXPECT_EQ(CodePage::NameOf(std::filesystem::path(u8"a😀b")), "a?b");
}

} // namespace
