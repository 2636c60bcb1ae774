#include "PtyPeer.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

PtyPeer::PtyPeer() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    std::array<char, 128> name{};
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0 ||
        ptsname_r(master_, name.data(), name.size()) != 0)
        throw std::runtime_error("no pseudo-terminal");
    device_ = name.data();
    termios settings{};
    tcgetattr(master_, &settings);
    cfmakeraw(&settings); // nothing is echoed before the program opens its end
    tcsetattr(master_, TCSANOW, &settings);
}

PtyPeer::~PtyPeer() {
    Unplug();
}

void PtyPeer::Send(std::span<const std::uint8_t> bytes) {
    if (::write(master_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("the line does not take the bytes");
}

std::vector<std::uint8_t> PtyPeer::Received() {
    std::array<std::uint8_t, 256> buffer{};
    const auto count = ::read(master_, buffer.data(), buffer.size());
    if (count <= 0)
        return {};
    return {buffer.begin(), buffer.begin() + count};
}

void PtyPeer::OnRequest(std::function<void()> answer) {
    notifier_ = std::make_unique<QSocketNotifier>(master_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this, answer = std::move(answer)] {
                         if (!Received().empty())
                             answer();
                     });
}

void PtyPeer::Unplug() {
    notifier_.reset();
    if (master_ >= 0)
        ::close(master_);
    master_ = -1;
}

unsigned PtyPeer::Speed() const {
    termios settings{};
    tcgetattr(master_, &settings);
    return cfgetospeed(&settings);
}
