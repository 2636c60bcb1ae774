#pragma once

#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// Command lines from standard input: a terminal, a pipe or a file.
class StandardInput {
public:
    explicit StandardInput(int descriptor) : descriptor_(descriptor) {}

    /// What the loop must watch; nothing after the end, and in the background, where the
    /// terminal's input belongs to the shell.
    std::optional<int> PollDescriptor() const;

    /// The program runs in the background of its terminal.
    bool InBackground() const;

    /// The lines that are whole by now. To be called when the descriptor is readable.
    std::vector<std::string> ReadLines();

    /// The end key was pressed at a terminal. The end of a pipe or file means nothing: what runs
    /// without a terminal is ended by a command or a signal.
    bool EndedByUser() const { return endedByUser_; }

    /// The end has come, whatever it was that ended.
    bool Ended() const { return !open_; }

private:
    int descriptor_;
    bool open_ = true;
    bool endedByUser_ = false;
    std::string line_; ///< what has come of the next line
};

} // namespace simulator
