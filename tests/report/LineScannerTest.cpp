#include "report/LineScanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> LinesOf(const std::string& bytes) {
    Mreport::MemorySource source(bytes);
    Mreport::LineScanner scanner(source);
    Mreport::ScannedLine line;
    std::vector<std::string> lines;
    while (scanner.Next(line))
        lines.emplace_back(line.text);
    return lines;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(LineScanner, Both_line_ends_are_read) {
    EXPECT_EQ(LinesOf("a\r\nb\nc"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(LinesOf("a\r\n"), Lines{"a"});
    EXPECT_EQ(LinesOf("\n\r\n"), (Lines{"", ""}));
    EXPECT_EQ(LinesOf(""), Lines{});
}

TEST(LineScanner, A_carriage_return_within_a_line_is_text) {
    EXPECT_EQ(LinesOf("a\rb\r\n"), Lines{"a\rb"});
}

TEST(LineScanner, Zero_bytes_are_text) {
    EXPECT_EQ(LinesOf(std::string("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
}

TEST(LineScanner, Lines_that_cross_a_block_are_whole) {
    // Lengths around every offset within a block of 256 KiB.
    std::string bytes;
    Lines expected;
    for (int i = 0; i < 9000; ++i) {
        expected.emplace_back(static_cast<std::size_t>(i % 131), static_cast<char>('a' + i % 26));
        bytes += expected.back() + (i % 3 == 0 ? "\n" : "\r\n");
    }
    ASSERT_GT(bytes.size(), 512U * 1024);
    EXPECT_EQ(LinesOf(bytes), expected);
}

TEST(LineScanner, Offsets_tell_where_a_line_begins_and_the_next_one) {
    Mreport::MemorySource source("ab\r\ncd\nef");
    Mreport::LineScanner scanner(source, 4);
    Mreport::ScannedLine line;
    ASSERT_TRUE(scanner.Next(line));
    EXPECT_EQ(line.offset, 4U);
    EXPECT_EQ(line.Next(), 7U);
    EXPECT_TRUE(line.terminated);
    ASSERT_TRUE(scanner.Next(line));
    EXPECT_EQ(line.offset, 7U);
    EXPECT_EQ(line.Next(), 9U);
    EXPECT_FALSE(line.terminated);
    EXPECT_FALSE(scanner.Next(line));
}

TEST(LineScanner, A_line_longer_than_a_block_gives_its_beginning_and_its_length) {
    for (const std::size_t length : {262'143U, 262'144U, 262'145U, 500'000U, 1'000'000U}) {
        const std::string longLine(length, 'x');
        Mreport::MemorySource source("first\n" + longLine + "\r\nlast\n");
        Mreport::LineScanner scanner(source);
        Mreport::ScannedLine line;
        ASSERT_TRUE(scanner.Next(line));
        ASSERT_TRUE(scanner.Next(line));
        EXPECT_EQ(line.length, length);
        EXPECT_EQ(line.text, std::string(Mreport::longestLineText, 'x'));
        EXPECT_EQ(line.Next(), 6 + length + 2);
        ASSERT_TRUE(scanner.Next(line)) << length;
        EXPECT_EQ(line.text, "last");
        EXPECT_FALSE(scanner.Next(line));
    }
}

TEST(LineScanner, A_long_line_can_be_given_up) {
    Mreport::MemorySource source(std::string(2'000'000, 'x'));
    Mreport::LineScanner scanner(source);
    int asked = 0;
    scanner.onLongLine = [&asked] { return ++asked == 2; };
    Mreport::ScannedLine line;
    EXPECT_FALSE(scanner.Next(line));
    EXPECT_EQ(asked, 2);
}

TEST(LineScanner, A_growing_source_is_read_on) {
    Mreport::MemorySource source("a\n");
    Mreport::LineScanner scanner(source);
    Mreport::ScannedLine line;
    ASSERT_TRUE(scanner.Next(line));
    EXPECT_FALSE(scanner.Next(line));
    source.Append("b\n");
    ASSERT_TRUE(scanner.Next(line));
    EXPECT_EQ(line.text, "b");
}
