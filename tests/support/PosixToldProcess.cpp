#include "support/ToldProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

extern char** environ;

struct ToldProcess::Process {
    pid_t id = 0; ///< 0 after its end was waited for
    int output = -1;

    std::optional<int> AwaitEnd() {
        int status = 0;
        ::waitpid(id, &status, 0);
        id = 0;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }
};

ToldProcess::ToldProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments)
    : process_(std::make_unique<Process>()) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const int refused =
        ::posix_spawn(&process_->id, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    process_->output = ends[0];
    if (refused != 0)
        throw std::runtime_error("cannot start " + program.string());
}

ToldProcess::~ToldProcess() {
    Kill();
    ::close(process_->output);
}

bool ToldProcess::Read() {
    std::array<char, 4096> bytes{};
    const auto count = ::read(process_->output, bytes.data(), bytes.size());
    if (count <= 0)
        return false;
    said_.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

std::optional<int> ToldProcess::Kill() {
    if (process_->id <= 0)
        return std::nullopt;
    ::kill(process_->id, SIGKILL);
    return process_->AwaitEnd();
}

int ToldProcess::Wait() {
    return process_->AwaitEnd().value_or(-1);
}
