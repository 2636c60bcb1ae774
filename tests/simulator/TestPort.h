#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include <termios.h>

/// A serial port as a program opens it: raw, without waiting.
class TestPort {
public:
    explicit TestPort(const std::filesystem::path& device, speed_t speed = B9600);
    ~TestPort();
    TestPort(const TestPort&) = delete;
    TestPort& operator=(const TestPort&) = delete;

    void SetSpeed(speed_t speed);
    void Write(std::span<const std::uint8_t> bytes);

    /// Asks for a frame and returns what has come when `count` bytes are there, or `within` has
    /// passed.
    std::vector<std::uint8_t> Request(std::size_t count = 48,
                                      std::chrono::milliseconds within = std::chrono::seconds(5));

    std::vector<std::uint8_t> Read(std::size_t count, std::chrono::milliseconds within);

    /// The cable is pulled: the system tells a hang-up.
    bool HungUp(std::chrono::milliseconds within) const;

private:
    int descriptor_;
};
