#include "simulator/Program.h"

#include "base/PortName.h"
#include "base/RunTimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <iostream>
#include <iterator>
#include <vector>

#include <poll.h>
#include <unistd.h>

namespace simulator {

namespace {

constexpr std::uint32_t defaultBitRate = 9600;
volatile std::sig_atomic_t endAsked = 0;

Seconds Now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

void Say(const std::string& text) {
    std::cout << text << '\n' << std::flush;
}

timespec TimeSpec(Seconds time) {
    const double whole = std::floor(std::max(time.count(), 0.0));
    timespec result{};
    result.tv_sec = static_cast<time_t>(whole);
    result.tv_nsec = static_cast<long>((std::max(time.count(), 0.0) - whole) * 1e9);
    return result;
}

constexpr std::array endingSignals = {SIGINT, SIGTERM, SIGHUP};

/// Blocks the signals that end the program except while it waits, so that none is missed. Returns
/// the mask to wait with.
sigset_t CatchSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) { endAsked = 1; };
    sigset_t blocked;
    sigset_t awaited;
    sigemptyset(&blocked);
    for (int signal : endingSignals) {
        ::sigaction(signal, &action, nullptr);
        sigaddset(&blocked, signal);
    }
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGTTIN, SIG_IGN);
    ::sigprocmask(SIG_BLOCK, &blocked, &awaited);
    for (int signal : endingSignals)
        sigdelset(&awaited, signal);
    return awaited;
}

/// A signal that came while there was always something to do is still on its way.
bool IsEndAsked() {
    sigset_t pending;
    ::sigpending(&pending);
    return endAsked != 0 || std::ranges::any_of(endingSignals, [&pending](int signal) {
               return sigismember(&pending, signal) != 0;
           });
}

std::filesystem::path LinkPath(const Options& options) {
    return options.link ? *options.link : LinkOfPort(options.comPort);
}

} // namespace

std::optional<std::filesystem::path> ControlPath(const Options& options) {
    if (!options.withControl || options.control)
        return options.control;
    if (options.device)
        return std::nullopt;
    return LinkPath(options).string() + ".control";
}

Program::Program(const Options& options)
    : options_(options), session_(Instrument(options.ideal ? Instrument::Nature::ideal
                                                           : Instrument::Nature::believable,
                                             options.seed, Now()),
                                  options.seed),
      console_(session_, *this), input_(STDIN_FILENO) {
    session_.Sending().SetFast(options.fast);
    session_.Sending().SetBitRate(options.bitRate.value_or(defaultBitRate));
    OpenLog();
    OpenControl();
    Replug();
    for (const std::string& line : options.commands) {
        const Answer answer = console_.Execute(line, Now());
        if (!answer.ok)
            throw RunTimeError(line + ": " + answer.text);
    }
}

Program::~Program() = default;

void Program::OpenLog() {
    if (!options_.log)
        return;
    log_.open(*options_.log, std::ios::binary | std::ios::app);
    if (!log_)
        throw RunTimeError(SystemError("Opening " + options_.log->string()));
}

void Program::OpenControl() {
    const std::optional<std::filesystem::path> path = ControlPath(options_);
    if (!path)
        return;
    std::error_code error;
    if (path->has_parent_path())
        std::filesystem::create_directories(path->parent_path(), error);
    control_ = std::make_unique<ControlSocket>(
        *path, [this](std::string_view line) { return console_.Execute(line, Now()); });
}

void Program::Run() {
    const sigset_t awaited = CatchSignals();
    Say("Instrument on " + Place() + ", type help");
    while (running_ && !IsEndAsked())
        ServeOnce(awaited);
}

void Program::ServeOnce(const sigset_t& awaited) {
    std::vector<pollfd> polls;
    if (port_)
        polls.push_back({port_->PollDescriptor(), POLLIN, 0});
    const std::size_t inputAt = polls.size();
    const std::optional<int> input = input_.PollDescriptor();
    if (input)
        polls.push_back({*input, POLLIN, 0});
    if (control_)
        control_->Watch(polls);

    const std::optional<Seconds> next = NextEvent();
    const timespec wait = next ? TimeSpec(*next - Now()) : timespec{};
    if (::ppoll(polls.data(), polls.size(), next ? &wait : nullptr, &awaited) < 0) {
        if (errno != EINTR)
            throw RunTimeError(SystemError("Waiting"));
        return;
    }
    const bool inputReady = input && polls[inputAt].revents != 0;
    if (port_)
        ServePort(polls.front().revents != 0);
    if (inputReady)
        ServeInput();
    if (control_)
        control_->Serve();
    ServeTime();
}

std::optional<Seconds> Program::NextEvent() const {
    std::optional<Seconds> lookAgain;
    if (input_.InBackground()) // nothing tells when the shell gives the terminal back
        lookAgain = Now() + Seconds(1);
    std::optional<Seconds> next;
    for (const std::optional<Seconds>& each : {session_.NextEvent(), replugAt_, lookAgain}) {
        if (each && (!next || *each < *next))
            next = each;
    }
    return next;
}

void Program::ServePort(bool readable) {
    try {
        FollowBitRate();
        if (readable)
            session_.Receive(port_->Read(), Now());
    } catch (const RunTimeError& error) {
        PortGone(error.what());
    }
}

void Program::ServeTime() {
    const Line::Due due = session_.Advance(Now());
    try {
        if (port_ && !due.bytes.empty())
            Send(due.bytes);
        if (port_ && due.unplug)
            Unplug(std::nullopt);
        if (replugAt_ && *replugAt_ <= Now())
            Replug();
    } catch (const RunTimeError& error) {
        PortGone(error.what());
    }
}

/// Whoever sees the answer finds it in the log already.
void Program::Send(std::span<const std::uint8_t> bytes) {
    if (log_.is_open() &&
        !log_.write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes)).flush())
        throw RunTimeError("Writing " + options_.log->string() + " failed");
    port_->Write(bytes);
}

void Program::ServeInput() {
    for (const std::string& line : input_.ReadLines()) {
        const Answer answer = console_.Execute(line, Now());
        if (!answer.text.empty())
            Say(answer.ok ? answer.text : "Error: " + answer.text);
    }
    if (input_.EndedByUser() || (options_.attached && input_.Ended()))
        Quit();
}

void Program::FollowBitRate() {
    if (options_.bitRate || !port_)
        return;
    if (const std::optional<std::uint32_t> rate = port_->PeerBitRate())
        session_.Sending().SetBitRate(*rate);
}

void Program::PortGone(const std::string& reason) {
    Unplug(std::nullopt);
    if (options_.device) {
        Say(reason + "; type replug when it is back");
        return;
    }
    // A program that died left the pseudo-terminal unusable: the next one gets a new one.
    Say(reason + "; a new one comes in a second");
    replugAt_ = Now() + Seconds(1);
}

void Program::Unplug(std::optional<Seconds> backAfter) {
    link_.reset();
    port_.reset();
    session_.LineLost();
    replugAt_.reset();
    if (backAfter)
        replugAt_ = Now() + *backAfter;
}

void Program::Replug() {
    replugAt_.reset();
    if (options_.device) {
        port_ = OpenSerialDevice(*options_.device, session_.Sending().BitRate());
        return;
    }
    std::unique_ptr<Port> port = OpenPseudoTerminal();
    link_ = std::make_unique<PortLink>(LinkPath(options_), port->Name());
    port_ = std::move(port);
}

std::string Program::Place() const {
    const std::string device = port_ ? port_->Name() : std::string("unplugged");
    if (options_.device)
        return *options_.device;
    if (options_.link)
        return options_.link->string() + " (" + device + ")";
    return PortName::Of(options_.comPort) + " (" + device + ")";
}

void Program::SetBitRate(std::optional<std::uint32_t> bitRate) {
    options_.bitRate = bitRate;
    if (bitRate)
        session_.Sending().SetBitRate(*bitRate);
    FollowBitRate();
    if (options_.device && port_)
        port_ = OpenSerialDevice(*options_.device, session_.Sending().BitRate());
}

} // namespace simulator
