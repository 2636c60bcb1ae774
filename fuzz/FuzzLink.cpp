#include "NullPlatform.h"

#include "base/RunTimeError.h"
#include "link/CommPort.h"
#include "tests/support/FakeTimer.h"

#include <algorithm>
#include <deque>
#include <span>
#include <utility>

namespace {

class Serial : public platform::SerialControl {
public:
    bool pluggedIn = true;

    void SetCommPort(int number) override { commPort_ = number; }
    int CommPort() const override { return commPort_; }
    void SetSettings(const std::string& /*settings*/) override {}
    void SetPortOpen(bool open) override {
        if (open && !pluggedIn)
            throw RunTimeError("away");
        open_ = open;
        input_.clear();
    }
    bool PortOpen() const override { return open_; }
    bool DeviceChanged() const override { return open_ && !pluggedIn; }
    void SetBufferSize(std::size_t /*bytes*/) override {}
    void SetRThreshold(int bytes) override { threshold_ = bytes; }
    int RThreshold() const override { return threshold_; }
    std::size_t InBufferCount() const override { return input_.size(); }
    void ClearInBuffer() override { input_.clear(); }
    std::vector<std::uint8_t> Input(std::size_t count) override {
        const auto taken = static_cast<std::ptrdiff_t>(std::min(count, input_.size()));
        std::vector<std::uint8_t> bytes(input_.begin(), input_.begin() + taken);
        input_.erase(input_.begin(), input_.begin() + taken);
        return bytes;
    }
    void Output(std::span<const std::uint8_t> /*bytes*/) override {
        if (!open_ || !pluggedIn)
            throw RunTimeError("away");
    }
    platform::CommTimeouts GetCommTimeouts() const override { return {}; }
    void SetCommTimeouts(const platform::CommTimeouts& /*timeouts*/) override {}

    void Arrive(std::span<const std::uint8_t> bytes) {
        if (!open_ || !pluggedIn)
            return;
        constexpr std::size_t bufferSize = 256;
        input_.insert(input_.end(), bytes.begin(), bytes.end());
        input_.resize(std::min(input_.size(), bufferSize));
        OnArrival();
        if (threshold_ > 0 && input_.size() >= static_cast<std::size_t>(threshold_))
            OnComm(Event::receive);
    }

    void Unplug() {
        pluggedIn = false;
        if (open_)
            OnComm(Event::portLost);
    }

private:
    int commPort_ = 1;
    bool open_ = false;
    int threshold_ = 0;
    std::deque<std::uint8_t> input_;
};

using fuzz::Require;

/// Carries out the input as what may happen to the link, in any order, also inside a message box.
class Course {
public:
    Course(fuzz::NullPlatform& platform, std::span<const std::uint8_t> input)
        : platform_(platform), rest_(input) {
        CommPort::Controls controls;
        controls.MSComm1 = &serial_;
        controls.tmrTimeout = &timeout_;
        controls.tmrTransferInterval = &interval_;
        CommPort::Attach(std::move(controls));
        CommPort::fncInitializeComPort();
        platform_.whileMessageIsOpen = [this] { InBox(); };
    }
    ~Course() {
        platform_.whileMessageIsOpen = nullptr;
        CommPort::Reset();
    }
    Course(const Course&) = delete;
    Course& operator=(const Course&) = delete;

    void Run() {
        while (!rest_.empty()) {
            Step();
            CheckState();
        }
        platform_.whileMessageIsOpen = nullptr;
        CheckRecovery();
    }

private:
    void InBox() {
        Require(!std::exchange(boxOpen_, true)); // boxes never pile up
        Require(CommPort::State() != CommPort::LinkState::failed);
        for (int i = 0; i < 3 && !rest_.empty(); ++i)
            Step();
        boxOpen_ = false;
    }

    std::uint8_t Take() {
        const auto byte = rest_.front();
        rest_ = rest_.subspan(1);
        return byte;
    }

    void Arrive(std::size_t count) {
        const auto bytes = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(bytes.size());
        serial_.Arrive(bytes);
    }

    void Step() {
        const auto what = Take();
        switch (what % 10) {
        case 0:
            if (timeout_.Enabled())
                CommPort::tmrTimeout_Timer();
            break;
        case 1:
            if (interval_.Enabled())
                CommPort::tmrTransferInterval_Timer();
            break;
        case 2:
            CommPort::BeginReading();
            break;
        case 3:
            CommPort::EndReading();
            break;
        case 4:
            serial_.Unplug();
            break;
        case 5:
            serial_.pluggedIn = true;
            break;
        case 6:
            CommPort::MSComm1_OnComm(static_cast<platform::SerialControl::Event>(what / 10));
            break;
        case 7:
            SendFrame();
            break;
        default:
            Arrive(what / 2);
        }
    }

    void SendFrame() {
        std::vector<std::uint8_t> frame(Frame::length, '1');
        for (std::size_t k = 0; k < Frame::valueCount; ++k)
            frame[k * Frame::fieldLength] = '+';
        frame.back() = Frame::endOfTransmission;
        serial_.Arrive(frame);
    }

    void CheckState() const {
        Require(!CommPort::Busy() || timeout_.Enabled() || boxOpen_);
        Require(!CommPort::TimedOut());
        for (std::size_t slot = Frame::valueCount; slot < CommPort::Readings().size(); ++slot)
            Require(CommPort::Readings()[slot] == 0);
    }

    /// Whatever has happened, starting to read on a good line gives values again.
    void CheckRecovery() {
        serial_.pluggedIn = true;
        if (timeout_.Enabled())
            CommPort::tmrTimeout_Timer();
        CommPort::EndReading();
        CommPort::Readings().fill(0);
        CommPort::BeginReading();
        Require(CommPort::Busy());
        SendFrame();
        Require(CommPort::State() == CommPort::LinkState::answered);
        Require(CommPort::Readings()[0] == 111.1F);
    }

    fuzz::NullPlatform& platform_;
    bool boxOpen_ = false;
    Serial serial_;
    fake::Timer timeout_;
    fake::Timer interval_;
    std::span<const std::uint8_t> rest_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::NullPlatform platform;
    Course(platform, {data, size}).Run();
    return 0;
}
