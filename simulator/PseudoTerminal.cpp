#include "simulator/Port.h"

#include "base/RunTimeError.h"
#include "simulator/FileDescriptor.h"
#include "simulator/LineSpeed.h"

#include <array>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <termios.h>

namespace simulator {

namespace {

constexpr std::uint32_t bitRateAtStart = 9600;

FileDescriptor OpenMaster() {
    FileDescriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!master.Valid() || ::grantpt(master.Get()) != 0 || ::unlockpt(master.Get()) != 0)
        throw RunTimeError(SystemError("Making a pseudo-terminal"));
    return master;
}

std::string SlaveName(const FileDescriptor& master) {
    std::array<char, 128> name{};
    if (::ptsname_r(master.Get(), name.data(), name.size()) != 0)
        throw RunTimeError(SystemError("Naming a pseudo-terminal"));
    return name.data();
}

/// The master alone is kept open. So the system tells when no program has the port open, and what
/// is sent then is lost, as on a real line. That state would make the master readable all the time;
/// an edge-triggered epoll set reports each change of it once.
class PseudoTerminal final : public Port {
public:
    PseudoTerminal() : master_(OpenMaster()), name_(SlaveName(master_)) {
        SetRaw();
        events_ = FileDescriptor(::epoll_create1(EPOLL_CLOEXEC));
        epoll_event event{};
        event.events = EPOLLIN | EPOLLET;
        if (!events_.Valid() ||
            ::epoll_ctl(events_.Get(), EPOLL_CTL_ADD, master_.Get(), &event) != 0)
            throw RunTimeError(SystemError("Watching " + name_));
    }

    int PollDescriptor() const override { return events_.Get(); }

    std::vector<std::uint8_t> Read() override {
        epoll_event event{};
        ::epoll_wait(events_.Get(), &event, 1, 0);
        std::vector<std::uint8_t> bytes;
        std::array<std::uint8_t, 512> part{};
        ssize_t count = 0;
        while ((count = ::read(master_.Get(), part.data(), part.size())) > 0)
            bytes.insert(bytes.end(), part.begin(), part.begin() + count);
        const bool attended = Attended();
        if (attended_ && !attended)
            ForgetUnread();
        attended_ = attended;
        return bytes;
    }

    void Write(std::span<const std::uint8_t> bytes) override {
        if (!Attended())
            return;
        attended_ = true;
        const ssize_t count = ::write(master_.Get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            throw RunTimeError(SystemError("Writing to " + name_));
    }

    std::optional<std::uint32_t> PeerBitRate() const override {
        termios settings{};
        if (::tcgetattr(master_.Get(), &settings) != 0)
            return std::nullopt;
        return BitRateOf(::cfgetospeed(&settings));
    }

    std::string Name() const override { return name_; }

private:
    /// A program has the port open.
    bool Attended() const {
        pollfd poll{master_.Get(), POLLIN, 0};
        return ::poll(&poll, 1, 0) <= 0 || (poll.revents & POLLHUP) == 0;
    }

    FileDescriptor OpenSlave() const {
        return FileDescriptor(::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    }

    void SetRaw() {
        const FileDescriptor slave = OpenSlave();
        termios settings{};
        if (!slave.Valid() || ::tcgetattr(slave.Get(), &settings) != 0)
            throw RunTimeError(SystemError("Opening " + name_));
        ::cfmakeraw(&settings);
        ::cfsetspeed(&settings, SpeedCodeOf(bitRateAtStart));
        if (::tcsetattr(slave.Get(), TCSANOW, &settings) != 0)
            throw RunTimeError(SystemError("Setting up " + name_));
    }

    /// The next program must not find what the last one left unread. A program that died with the
    /// port locked for itself leaves it locked: then opening it fails, and the port has gone.
    void ForgetUnread() {
        const FileDescriptor slave = OpenSlave();
        if (!slave.Valid())
            throw RunTimeError(SystemError("Opening " + name_));
        ::tcflush(slave.Get(), TCIOFLUSH);
    }

    FileDescriptor master_;
    std::string name_;
    FileDescriptor events_;
    bool attended_ = false; ///< when last looked at
};

} // namespace

std::unique_ptr<Port> OpenPseudoTerminal() {
    return std::make_unique<PseudoTerminal>();
}

} // namespace simulator
