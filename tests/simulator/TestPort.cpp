#include "TestPort.h"

#include <array>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

TestPort::TestPort(const std::filesystem::path& device, speed_t speed)
    : descriptor_(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (descriptor_ < 0)
        throw std::runtime_error("Opening " + device.string());
    SetSpeed(speed);
}

TestPort::~TestPort() {
    ::close(descriptor_);
}

void TestPort::SetSpeed(speed_t speed) {
    termios settings{};
    ::tcgetattr(descriptor_, &settings);
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, speed);
    ::tcsetattr(descriptor_, TCSANOW, &settings);
}

void TestPort::Write(std::span<const std::uint8_t> bytes) {
    if (::write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("Writing to the port");
}

std::vector<std::uint8_t> TestPort::Request(std::size_t count, std::chrono::milliseconds within) {
    constexpr std::array<std::uint8_t, 1> request = {0x02};
    Write(request);
    return Read(count, within);
}

std::vector<std::uint8_t> TestPort::Read(std::size_t count, std::chrono::milliseconds within) {
    const auto end = std::chrono::steady_clock::now() + within;
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < count) {
        const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd poll{descriptor_, POLLIN, 0};
        if (rest.count() <= 0 || ::poll(&poll, 1, static_cast<int>(rest.count())) <= 0)
            return bytes;
        std::array<std::uint8_t, 256> part{};
        const ssize_t got =
            ::read(descriptor_, part.data(), std::min(part.size(), count - bytes.size()));
        if (got <= 0)
            return bytes;
        bytes.insert(bytes.end(), part.begin(), part.begin() + got);
    }
    return bytes;
}

bool TestPort::HungUp(std::chrono::milliseconds within) const {
    pollfd poll{descriptor_, 0, 0};
    return ::poll(&poll, 1, static_cast<int>(within.count())) > 0 && (poll.revents & POLLHUP) != 0;
}
