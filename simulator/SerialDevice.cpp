#include "simulator/Port.h"

#include "base/RunTimeError.h"
#include "simulator/FileDescriptor.h"
#include "simulator/LineSpeed.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <termios.h>

namespace simulator {

namespace {

class SerialDevice final : public Port {
public:
    SerialDevice(std::string path, std::uint32_t bitRate)
        : path_(std::move(path)),
          device_(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
        termios settings{};
        if (!device_.Valid())
            throw RunTimeError(SystemError("Opening " + path_));
        if (::tcgetattr(device_.Get(), &settings) != 0)
            throw RunTimeError(path_ + " is no serial device");
        ::cfmakeraw(&settings);
        settings.c_cflag |= CLOCAL | CREAD;
        settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
        settings.c_cc[VMIN] = 0;
        settings.c_cc[VTIME] = 0;
        ::cfsetspeed(&settings, SpeedCodeOf(bitRate));
        if (::tcsetattr(device_.Get(), TCSANOW, &settings) != 0)
            throw RunTimeError(SystemError("Setting up " + path_));
    }

    int PollDescriptor() const override { return device_.Get(); }

    std::vector<std::uint8_t> Read() override {
        std::array<std::uint8_t, 512> part{};
        const ssize_t count = ::read(device_.Get(), part.data(), part.size());
        if (count > 0)
            return {part.begin(), part.begin() + count};
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return {};
        // Reading follows a report of the poll: nothing there means that the device has gone.
        throw RunTimeError(path_ + " has gone");
    }

    void Write(std::span<const std::uint8_t> bytes) override {
        const ssize_t count = ::write(device_.Get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            throw RunTimeError(SystemError("Writing to " + path_));
    }

    std::optional<std::uint32_t> PeerBitRate() const override { return std::nullopt; }

    std::string Name() const override { return path_; }

private:
    std::string path_;
    FileDescriptor device_;
};

} // namespace

std::unique_ptr<Port> OpenSerialDevice(const std::string& path, std::uint32_t bitRate) {
    return std::make_unique<SerialDevice>(path, bitRate);
}

} // namespace simulator
