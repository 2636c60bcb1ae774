#include "simulator/StandardInput.h"

#include "simulator/FileDescriptor.h"

#include <array>
#include <gtest/gtest.h>
#include <string_view>

#include <cstdlib>
#include <fcntl.h>

using namespace simulator;

namespace {

using Lines = std::vector<std::string>;

void Write(const FileDescriptor& to, std::string_view text) {
    ASSERT_EQ(::write(to.Get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

struct Pipe {
    FileDescriptor in;
    FileDescriptor out;

    Pipe() {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) == 0) {
            out = FileDescriptor(ends[0]);
            in = FileDescriptor(ends[1]);
        }
    }
};

} // namespace

TEST(StandardInput, A_line_counts_when_its_end_has_come) {
    const Pipe pipe;
    StandardInput input(pipe.out.Get());
    Write(pipe.in, "sta");
    EXPECT_TRUE(input.ReadLines().empty());
    Write(pipe.in, "tus\nhelp\nqu");
    EXPECT_EQ(input.ReadLines(), (Lines{"status", "help"}));
    Write(pipe.in, "it\n");
    EXPECT_EQ(input.ReadLines(), Lines{"quit"});
    EXPECT_EQ(input.PollDescriptor(), pipe.out.Get());
}

TEST(StandardInput, The_end_of_a_pipe_is_not_watched_any_more_and_ends_nothing) {
    Pipe pipe;
    StandardInput input(pipe.out.Get());
    pipe.in = FileDescriptor();
    EXPECT_TRUE(input.ReadLines().empty());
    EXPECT_FALSE(input.PollDescriptor().has_value());
    EXPECT_FALSE(input.EndedByUser());
}

TEST(StandardInput, The_end_key_at_a_terminal_ends) {
    const FileDescriptor keyboard(::posix_openpt(O_RDWR | O_NOCTTY));
    ASSERT_TRUE(keyboard.Valid());
    ASSERT_EQ(::grantpt(keyboard.Get()), 0);
    ASSERT_EQ(::unlockpt(keyboard.Get()), 0);
    const FileDescriptor terminal(::open(::ptsname(keyboard.Get()), O_RDWR | O_NOCTTY));
    StandardInput input(terminal.Get());
    Write(keyboard, "status\n");
    EXPECT_EQ(input.ReadLines(), Lines{"status"});
    EXPECT_FALSE(input.EndedByUser());
    Write(keyboard, "\x04");
    EXPECT_TRUE(input.ReadLines().empty());
    EXPECT_TRUE(input.EndedByUser());
}
