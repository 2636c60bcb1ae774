#include "support/InstrumentProcess.h"

#include "simulator/ControlSocket.h"

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds patience{10};
constexpr int exitCodeOfSignal = 128;

[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error("vantrel-instrument: " + what);
}

/// In the child, where only plain system calls may be made.
[[noreturn]] void Become(int input, int output, char* const* arguments, char* const* environment) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::execve(VANTREL_INSTRUMENT_PROGRAM, arguments, environment);
    ::_exit(127);
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& each : texts)
        pointers.push_back(each.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> EnvironmentWith(const std::filesystem::path& configHome) {
    std::vector<std::string> environment = {"XDG_CONFIG_HOME=" + configHome.string()};
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string_view entry = *each;
        if (!entry.starts_with("XDG_CONFIG_HOME="))
            environment.emplace_back(entry);
    }
    return environment;
}

} // namespace

InstrumentProcess::InstrumentProcess(std::filesystem::path configHome,
                                     std::vector<std::string> arguments)
    : InstrumentProcess(std::move(configHome), Unstarted{}) {
    Start(arguments);
    greeting_ = ReadLine();
    if (!greeting_.starts_with("Instrument on "))
        Fail("it did not start: " + greeting_);
}

InstrumentProcess::InstrumentProcess(std::filesystem::path configHome, Unstarted)
    : configHome_(std::move(configHome)) {}

InstrumentProcess::~InstrumentProcess() {
    try {
        Stop();
    } catch (const std::runtime_error&) {
        ::kill(id_, SIGKILL); // it did not end when it was told to
        ::waitpid(id_, nullptr, 0);
    }
    ::close(toInput_);
    ::close(fromOutput_);
}

void InstrumentProcess::Start(const std::vector<std::string>& arguments) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
        Fail("no pipe could be made");
    std::vector<std::string> words = {VANTREL_INSTRUMENT_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment = EnvironmentWith(configHome_);
    const std::vector<char*> wordPointers = Pointers(words);
    const std::vector<char*> environmentPointers = Pointers(environment);
    id_ = ::fork();
    if (id_ == 0)
        Become(input[0], output[1], wordPointers.data(), environmentPointers.data());
    ::close(input[0]);
    ::close(output[1]);
    toInput_ = input[1];
    fromOutput_ = output[0];
    if (id_ < 0)
        Fail("it could not be started");
}

std::string InstrumentProcess::Device() const {
    // The last one: the link before it may lie below /dev too.
    const std::size_t begin = greeting_.rfind("/dev/");
    if (begin == std::string::npos)
        Fail("no device in \"" + greeting_ + "\"");
    return greeting_.substr(begin, greeting_.find_first_of("),", begin) - begin);
}

std::filesystem::path InstrumentProcess::Link(int number) const {
    return configHome_ / "Vantrel" / "ports" / ("com" + std::to_string(number));
}

std::string InstrumentProcess::Command(const std::string& line, int number) const {
    const simulator::Answer answer =
        simulator::SendCommand(Link(number).string() + ".control", line);
    if (!answer.ok)
        Fail("\"" + line + "\" was refused: " + answer.text);
    return answer.text;
}

void InstrumentProcess::WriteInput(const std::string& line) {
    const std::string text = line + "\n";
    if (::write(toInput_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        Fail("it takes no input");
}

void InstrumentProcess::CloseInput() {
    ::close(std::exchange(toInput_, -1));
}

std::string InstrumentProcess::ReadLine() {
    std::size_t end = 0;
    while ((end = pending_.find('\n')) == std::string::npos) {
        if (!ReadMore())
            Fail("it said no more than \"" + pending_ + "\"");
    }
    std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    return line;
}

bool InstrumentProcess::ReadMore() {
    constexpr int patience_ms =
        static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(patience).count());
    pollfd poll{fromOutput_, POLLIN, 0};
    if (::poll(&poll, 1, patience_ms) <= 0)
        return false;
    std::array<char, 1024> part{};
    const ssize_t count = ::read(fromOutput_, part.data(), part.size());
    if (count <= 0)
        return false;
    pending_.append(part.data(), static_cast<std::size_t>(count));
    return true;
}

int InstrumentProcess::Stop(int signal) {
    if (exitCode_ < 0 && id_ > 0)
        ::kill(id_, signal);
    return WaitForEnd();
}

int InstrumentProcess::WaitForEnd() {
    if (exitCode_ >= 0 || id_ <= 0)
        return exitCode_;
    const auto giveUp = std::chrono::steady_clock::now() + patience;
    int status = 0;
    while (::waitpid(id_, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > giveUp)
            Fail("it did not end");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : exitCodeOfSignal + WTERMSIG(status);
    return exitCode_;
}

InstrumentProcess::Result InstrumentProcess::RunToEnd(const std::filesystem::path& configHome,
                                                      const std::vector<std::string>& arguments) {
    InstrumentProcess process(configHome, Unstarted{});
    process.Start(arguments);
    while (process.ReadMore()) {
    }
    return {process.WaitForEnd(), process.pending_};
}
