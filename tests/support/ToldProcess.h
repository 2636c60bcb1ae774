#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A program that tells on standard output how far it has come, and may be killed at any moment.
/// It is killed with its object. What the system refuses is thrown as std::runtime_error.
class ToldProcess {
public:
    /// Arguments without blanks at their ends and without quotation marks.
    ToldProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~ToldProcess();
    ToldProcess(const ToldProcess&) = delete;
    ToldProcess& operator=(const ToldProcess&) = delete;

    /// Waits until it has said something; false where it has ended without a word.
    bool AwaitWord();

    /// Kills it and returns its exit code where it had ended by itself.
    std::optional<int> Kill();

    /// Waits for its end and returns its exit code, -1 where it was killed.
    int Wait();

    /// The last line that it said, without its end; empty where there is none. After its end.
    std::string LastLine();

private:
    /// Appends to `said_` what there is, waiting for it; false at the end.
    bool Read();

    struct Process;
    std::unique_ptr<Process> process_;
    std::string said_;
};

/// What such a program calls: the line has left it when this returns.
void Tell(const std::string& line);
