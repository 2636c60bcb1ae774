#pragma once

#include "link/CommPort.h"
#include "support/FakeTimer.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace fake {

/// A serial control whose ports, bytes and failures the test decides.
class SerialControl : public platform::SerialControl {
public:
    std::set<int> ports = {1, 2, 3, 4};                 ///< those that can be opened
    std::string device = "first";                       ///< what the port's name stands for now
    std::string openError = "Opening the port: denied"; ///< why the others cannot
    std::string outputError;                            ///< when set, writing throws it
    std::vector<std::vector<std::uint8_t>> written;     ///< one entry a write
    std::vector<int> opened;                            ///< the ports, in the order of opening
    std::function<void()> onOutput;                     ///< an instrument that answers at once
    std::string settings;
    std::size_t bufferSize = 0;
    platform::CommTimeouts timeouts;
    int timeoutsSet = 0;

    void SetCommPort(int number) override { commPort_ = number; }
    int CommPort() const override { return commPort_; }
    void SetSettings(const std::string& text) override { settings = text; }
    void SetPortOpen(bool open) override;
    bool PortOpen() const override { return open_; }
    bool DeviceChanged() const override { return open_ && openedOn_ != device; }
    void SetBufferSize(std::size_t bytes) override { bufferSize = bytes; }
    void SetRThreshold(int bytes) override { threshold_ = bytes; }
    int RThreshold() const override { return threshold_; }
    std::size_t InBufferCount() const override { return input_.size(); }
    void ClearInBuffer() override { input_.clear(); }
    std::vector<std::uint8_t> Input(std::size_t count) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    platform::CommTimeouts GetCommTimeouts() const override { return timeouts; }
    void SetCommTimeouts(const platform::CommTimeouts& value) override;

    /// Bytes come in: first the arrival is told, then, by the threshold, the receive event.
    void Arrive(std::span<const std::uint8_t> bytes);

    /// The device goes away: the port cannot be opened any more and its loss is told.
    void Unplug();

private:
    int commPort_ = 1;
    bool open_ = false;
    std::string openedOn_; ///< the device
    int threshold_ = 0;
    std::deque<std::uint8_t> input_;
};

/// The link with all its controls under the test's hand.
class Link {
public:
    Link();
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    SerialControl serial;
    Timer timeout;
    Timer interval;
    Timer probe;
    std::string status; ///< what txtStatus shows
    std::string answer; ///< what lblAnswer shows
    bool searching = false;
    std::vector<std::string> portList; ///< what cboPort offers
    int selectedPort = -1;
    int selectedBitRate = -1;
    int intervalValue = 1;
    std::string intervalUnit = "seconds";

    void TimeoutTicks();
    void IntervalTicks();
    void ProbeTicks();
    std::size_t Requests() const { return serial.written.size(); }
};

} // namespace fake

/// A whole frame of eight values in tenths, for example 123 for 12.3.
std::vector<std::uint8_t> FrameOf(const std::array<int, 8>& tenths);

/// The same with another last byte than EOT.
std::vector<std::uint8_t> BadFrameOf(const std::array<int, 8>& tenths);

/// The pieces one behind the other.
std::vector<std::uint8_t> Glued(std::initializer_list<std::vector<std::uint8_t>> pieces);
