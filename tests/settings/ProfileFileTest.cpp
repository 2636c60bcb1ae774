#include "support/FakePlatform.h"

#include <gtest/gtest.h>

// What a settings file may look like after years of editors and of other programs, and what a
// change leaves of it. These hold for every implementation of the calls.

namespace {

class ProfileFileTest : public testing::Test {
protected:
    void File(const std::string& bytes) { WriteBytes(platform.SettingsFile(), bytes); }
    std::string FileNow() { return ReadBytes(platform.SettingsFile()); }
    std::string Read(const std::string& key = "K") {
        return platform.profile->GetString("Hardware", key, "fallback", 130);
    }
    int ReadInt() { return platform.profile->GetInt("Hardware", "K", 2); }
    bool Write(const std::string& value, const std::string& key = "K") {
        return platform.profile->Write("Hardware", key, value);
    }

    fake::Platform platform;
};

TEST_F(ProfileFileTest, A_missing_file_gives_the_fallback) {
    EXPECT_EQ(Read(), "fallback");
    EXPECT_EQ(ReadInt(), 2);
}

TEST_F(ProfileFileTest, A_value_reads_back_as_it_was_written) {
    EXPECT_TRUE(Write("River \xE9tude \xB0 \x80;=[x]"));
    EXPECT_EQ(Read(), "River \xE9tude \xB0 \x80;=[x]");
    EXPECT_EQ(FileNow(), "[Hardware]\r\nK=River \xE9tude \xB0 \x80;=[x]\r\n");
}

TEST_F(ProfileFileTest, An_empty_value_is_a_value) {
    Write("");
    EXPECT_EQ(FileNow(), "[Hardware]\r\nK=\r\n");
    EXPECT_EQ(Read(), "");
    EXPECT_EQ(ReadInt(), 2);
}

TEST_F(ProfileFileTest, Section_and_key_are_found_in_any_case_and_keep_their_spelling) {
    File("[HARDWARE]\r\nk=1\r\n");
    EXPECT_EQ(Read(), "1");
    Write("2");
    EXPECT_EQ(FileNow(), "[HARDWARE]\r\nk=2\r\n");
}

TEST_F(ProfileFileTest, The_first_of_two_equal_keys_and_of_two_equal_sections_counts) {
    File("[Hardware]\r\nK=1\r\nk=2\r\n[hardware]\r\nJ=3\r\n");
    EXPECT_EQ(Read(), "1");
    EXPECT_EQ(Read("J"), "fallback");
}

TEST_F(ProfileFileTest, Blanks_around_names_and_values_are_dropped) {
    File("  [ Hardware ]  \r\n\t K \t=  two words \t\r\n");
    EXPECT_EQ(Read(), "two words");
}

TEST_F(ProfileFileTest, One_pair_of_equal_quotes_is_dropped) {
    File("[Hardware]\r\nK=\"  v \"\r\nL='v'\r\nM=\"\"v\"\"\r\nN=\"v'\r\nO=\"\r\n");
    EXPECT_EQ(Read("K"), "  v ");
    EXPECT_EQ(Read("L"), "v");
    EXPECT_EQ(Read("M"), "\"v\"");
    EXPECT_EQ(Read("N"), "\"v'");
    EXPECT_EQ(Read("O"), "\"");
}

TEST_F(ProfileFileTest, Comments_and_lines_before_the_first_section_are_no_keys_of_a_section) {
    File("K=0\r\n; K=1\r\n[Hardware]\r\n  ;K=2\r\nnote to self\r\nK=3\r\n");
    EXPECT_EQ(Read(), "3");
}

TEST_F(ProfileFileTest, A_section_line_needs_its_closing_bracket) {
    File("[Hardware]\r\nJ=1\r\n[Other\r\nK=2\r\n");
    EXPECT_EQ(Read(), "2");
}

TEST_F(ProfileFileTest, A_value_is_cut_at_129_characters_and_written_whole) {
    const std::string text(200, 'x');
    Write(text);
    EXPECT_EQ(Read(), text.substr(0, 129));
    EXPECT_EQ(FileNow(), "[Hardware]\r\nK=" + text + "\r\n");
}

TEST_F(ProfileFileTest, Both_line_ends_are_read) {
    File("[Hardware]\nJ=1\nK=2\n");
    EXPECT_EQ(Read(), "2");
    File("[Hardware]\r\nJ=1\nK=3");
    EXPECT_EQ(Read(), "3");
}

TEST_F(ProfileFileTest, An_integer_is_the_digits_in_front) {
    File("[Hardware]\r\nK= -12abc\r\n");
    EXPECT_EQ(ReadInt(), -12);
    File("[Hardware]\r\nK=8.9\r\n");
    EXPECT_EQ(ReadInt(), 8);
    File("[Hardware]\r\nK=\"33\"\r\n");
    EXPECT_EQ(ReadInt(), 33);
    File("[Hardware]\r\nK=COM3\r\n");
    EXPECT_EQ(ReadInt(), 0);
}

TEST_F(ProfileFileTest, A_file_with_a_byte_order_mark_is_read_and_written_in_its_encoding) {
    File("\xEF\xBB\xBF[Hardware]\r\nJ=\xC3\xA9\r\nK=1\r\n");
    EXPECT_EQ(Read("J"), "\xE9");
    Write("\x80");
    EXPECT_EQ(FileNow(), "\xEF\xBB\xBF[Hardware]\r\nJ=\xC3\xA9\r\nK=\xE2\x82\xAC\r\n");
}

TEST_F(ProfileFileTest, A_UTF_16_file_is_read_and_written_as_such) {
    const auto wide = [](const std::string& text) {
        std::string bytes;
        for (const char c : text)
            bytes.append({c, '\0'});
        return bytes;
    };
    File("\xFF\xFE" + wide("[Hardware]\r\nK=\xE9\r\n"));
    EXPECT_EQ(Read(), "\xE9");
    Write("v");
    EXPECT_EQ(FileNow(), "\xFF\xFE" + wide("[Hardware]\r\nK=v\r\n"));
}

TEST_F(ProfileFileTest, No_value_deletes_the_key_and_no_key_the_section) {
    File("[A]\r\nx=1\r\n[Hardware]\r\nJ=1\r\nK=2\r\n[B]\r\ny=1\r\n");
    EXPECT_TRUE(platform.profile->Write("Hardware", "K", std::nullopt));
    EXPECT_EQ(FileNow(), "[A]\r\nx=1\r\n[Hardware]\r\nJ=1\r\n[B]\r\ny=1\r\n");
    EXPECT_TRUE(platform.profile->Write("Hardware", std::nullopt, std::nullopt));
    EXPECT_EQ(FileNow(), "[A]\r\nx=1\r\n[B]\r\ny=1\r\n");
}

TEST_F(ProfileFileTest, A_change_by_an_editor_between_two_reads_is_seen) {
    File("[Hardware]\r\nK=1\r\n");
    EXPECT_EQ(Read(), "1");
    File("[Hardware]\r\nK=2\r\n"); // of the same length and at once
    EXPECT_EQ(Read(), "2");
    std::filesystem::remove(platform.SettingsFile());
    EXPECT_EQ(Read(), "fallback");
}

} // namespace
