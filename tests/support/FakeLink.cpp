#include "support/FakeLink.h"

#include "base/RunTimeError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace fake {

void SerialControl::SetPortOpen(bool open) {
    if (open && !ports.contains(commPort_))
        throw RunTimeError(openError);
    if (open)
        opened.push_back(commPort_);
    open_ = open;
    openedOn_ = device;
    input_.clear();
}

std::vector<std::uint8_t> SerialControl::Input(std::size_t count) {
    const auto taken = static_cast<std::ptrdiff_t>(std::min(count, input_.size()));
    std::vector<std::uint8_t> bytes(input_.begin(), input_.begin() + taken);
    input_.erase(input_.begin(), input_.begin() + taken);
    return bytes;
}

void SerialControl::Output(std::span<const std::uint8_t> bytes) {
    if (!outputError.empty())
        throw RunTimeError(outputError);
    EXPECT_TRUE(open_) << "written to a closed port";
    written.emplace_back(bytes.begin(), bytes.end());
    if (onOutput)
        onOutput();
}

void SerialControl::SetCommTimeouts(const platform::CommTimeouts& value) {
    EXPECT_TRUE(open_) << "time-outs set on a closed port";
    timeouts = value;
    ++timeoutsSet;
}

void SerialControl::Arrive(std::span<const std::uint8_t> bytes) {
    if (!open_)
        return;
    input_.insert(input_.end(), bytes.begin(), bytes.end());
    if (bufferSize != 0 && input_.size() > bufferSize)
        input_.resize(bufferSize);
    if (OnArrival)
        OnArrival();
    if (OnComm && threshold_ > 0 && input_.size() >= static_cast<std::size_t>(threshold_))
        OnComm(Event::receive);
}

void SerialControl::Unplug() {
    ports.erase(commPort_);
    if (open_ && OnComm)
        OnComm(Event::portLost);
}

Link::Link() {
    CommPort::Controls controls;
    controls.MSComm1 = &serial;
    controls.tmrTimeout = &timeout;
    controls.tmrTransferInterval = &interval;
    controls.tmrProbe = &probe;
    controls.SetAnswerText = [this](const std::string& text) { answer = text; };
    controls.SetSearching = [this](bool runs) { searching = runs; };
    controls.SetStatusText = [this](const std::string& text) { status = text; };
    controls.SetPortList = [this](const std::vector<std::string>& list) { portList = list; };
    controls.SelectPort = [this](int entry) { selectedPort = entry; };
    controls.SelectBitRate = [this](int entry) { selectedBitRate = entry; };
    controls.IntervalValue = [this] { return intervalValue; };
    controls.IntervalUnit = [this] { return intervalUnit; };
    CommPort::Attach(std::move(controls));
}

Link::~Link() {
    CommPort::Detach();
}

void Link::TimeoutTicks() {
    ASSERT_TRUE(timeout.Enabled()) << "tmrTimeout is not running";
    CommPort::tmrTimeout_Timer();
}

void Link::IntervalTicks() {
    ASSERT_TRUE(interval.Enabled()) << "tmrTransferInterval is not running";
    CommPort::tmrTransferInterval_Timer();
}

void Link::ProbeTicks() {
    ASSERT_TRUE(probe.Enabled()) << "tmrProbe is not running";
    CommPort::tmrProbe_Timer();
}

} // namespace fake

std::vector<std::uint8_t> FrameOf(const std::array<int, 8>& tenths) {
    std::string text;
    for (const int value : tenths) {
        std::array<char, 8> field{};
        std::snprintf(field.data(), field.size(), "%+05d\t", value);
        text += field.data();
    }
    text.back() = 0x04;
    return {text.begin(), text.end()};
}

std::vector<std::uint8_t> BadFrameOf(const std::array<int, 8>& tenths) {
    auto frame = FrameOf(tenths);
    frame.back() = '\t';
    return frame;
}

std::vector<std::uint8_t> Glued(std::initializer_list<std::vector<std::uint8_t>> pieces) {
    std::vector<std::uint8_t> all;
    for (const auto& piece : pieces)
        all.insert(all.end(), piece.begin(), piece.end());
    return all;
}
