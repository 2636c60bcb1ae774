#include "support/Win32Instrument.h"

#include "platform/win32/Win32SerialControl.h"

#include "base/RunTimeError.h"
#include "link/PortChoice.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

using namespace std::chrono_literals;

namespace {

constexpr std::array<std::uint8_t, 1> request = {2};
constexpr std::size_t frameSize = 48;

/// The serial control at a port whose far end the test moves.
class Win32Serial : public testing::Test {
protected:
    using Bytes = std::vector<std::uint8_t>;

    void SetUp() override {
        if (!Win32Instrument::IsThere())
            GTEST_SKIP() << "no port with an instrument at its far end";
        control.SetCommPort(Win32Instrument::portNumber);
    }

    /// Delivers what comes until the condition holds or the time is over.
    bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds time = 5s) {
        const auto end = std::chrono::steady_clock::now() + time;
        while (!condition()) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            if (left <= 0ms)
                return false;
            if (::WaitForSingleObject(control.Arrival(), static_cast<DWORD>(left.count())) ==
                WAIT_OBJECT_0) {
                ++wakings;
                control.Deliver();
            }
        }
        return true;
    }

    bool WaitForBytes(std::size_t count) {
        return WaitFor([&] { return control.InBufferCount() >= count; });
    }

    std::string OpeningError() {
        try {
            control.SetPortOpen(true);
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return {};
    }

    platform::Win32SerialControl control;
    int wakings = 0;
};

TEST_F(Win32Serial, A_port_number_outside_1_to_16_is_refused) {
    control.SetCommPort(17);
    EXPECT_EQ(OpeningError(), "Opening COM17: there is no such port");
}

TEST_F(Win32Serial, An_impossible_line_format_is_refused) {
    for (const char* settings : {"9600", "9600,E,7,1", "0,N,8,1", ",N,8,1", "fast,N,8,1"}) {
        control.SetSettings(settings);
        EXPECT_EQ(OpeningError(),
                  "Opening COM3: the line format " + std::string(settings) + " is not possible");
    }
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(Win32Serial, A_port_without_a_device_says_so) {
    platform::win32::SerialPort port;
    try {
        port.Open(R"(\\.\COM99)", 9600);
        FAIL() << "COM99 can be opened";
    } catch (const RunTimeError& error) {
        EXPECT_STREQ(error.what(), "the port is not connected");
    }
    EXPECT_FALSE(port.IsOpen());
}

TEST_F(Win32Serial, The_time_outs_of_every_offered_bit_rate_are_read_back_from_the_driver) {
    const Win32Instrument instrument;
    for (const std::int32_t rate : {300, 1200, 2400, 4800, 9600, 19200, 57600, 115200}) {
        control.SetSettings(std::to_string(rate) + ",N,8,1");
        control.SetPortOpen(true);
        control.SetCommTimeouts(TimeoutsFor(rate));
        EXPECT_EQ(control.GetCommTimeouts(), TimeoutsFor(rate)) << rate;
        control.SetPortOpen(false);
    }
    // 10000 / 300 is 33 ms a byte, and one second besides.
    EXPECT_EQ(TimeoutsFor(300), (platform::CommTimeouts{33, 33, 1000, 33, 1000}));
}

TEST_F(Win32Serial, A_frame_is_answered_and_told_of_at_the_threshold) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.SetRThreshold(frameSize);
    int received = 0;
    control.OnComm = [&](auto event) {
        EXPECT_EQ(event, platform::SerialControl::Event::receive);
        EXPECT_GE(control.InBufferCount(), frameSize);
        ++received;
    };

    control.Output(request);

    EXPECT_TRUE(WaitFor([&] { return received > 0; }));
    const Bytes frame = control.Input(frameSize);
    ASSERT_EQ(frame.size(), frameSize);
    EXPECT_EQ(frame.back(), 4);
    EXPECT_EQ(control.InBufferCount(), 0U);
}

TEST_F(Win32Serial, A_read_of_what_has_come_never_waits_for_the_time_out) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.SetCommTimeouts(TimeoutsFor(9600));
    auto longest = 0ms;
    for (int i = 0; i < 20; ++i) {
        control.Output(request);
        const auto before = std::chrono::steady_clock::now();
        const auto bytes = control.Input(256); // more than will come
        longest = std::max(longest, std::chrono::duration_cast<std::chrono::milliseconds>(
                                        std::chrono::steady_clock::now() - before));
        ASSERT_TRUE(WaitForBytes(frameSize - bytes.size()));
        control.ClearInBuffer();
    }
    RecordProperty("longest_read_ms", static_cast<int>(longest.count()));
    EXPECT_LT(longest, 500ms) << "the time-outs' constant is 1000 ms";
}

TEST_F(Win32Serial, An_idle_line_wakes_nobody_but_for_the_time_out_of_a_read) {
    const Win32Instrument instrument;
    control.SetPortOpen(true);
    control.SetCommTimeouts(TimeoutsFor(9600));
    int told = 0;
    control.OnArrival = [&] { ++told; };
    control.OnComm = [&](auto) { ++told; };

    EXPECT_FALSE(WaitFor([] { return false; }, 3s));

    EXPECT_EQ(told, 0);
    EXPECT_FALSE(control.DeviceChanged());
    EXPECT_LE(wakings, 4);
}

TEST_F(Win32Serial, Bytes_that_somebody_has_looked_at_are_told_of_all_the_same) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    int arrivals = 0;
    control.OnArrival = [&] { ++arrivals; };
    control.Output(request);
    while (control.InBufferCount() < frameSize)
        ::Sleep(1);

    EXPECT_TRUE(WaitFor([&] { return arrivals > 0; }, 100ms));
}

TEST_F(Win32Serial, Input_takes_no_more_than_asked_for_and_keeps_the_rest) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.Output(request);
    ASSERT_TRUE(WaitForBytes(frameSize));

    EXPECT_EQ(control.Input(40).size(), 40U);
    EXPECT_EQ(control.Input(256).size(), 8U);
}

TEST_F(Win32Serial, What_nobody_takes_does_not_pile_up_beyond_the_buffer) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.SetBufferSize(100);
    for (int i = 0; i < 3; ++i) {
        control.Output(request);
        WaitFor([] { return false; }, 100ms);
    }
    EXPECT_EQ(control.InBufferCount(), 100U);
}

TEST_F(Win32Serial, Emptying_the_buffer_drops_what_the_system_holds_as_well) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.Output(request);
    ::Sleep(200); // the frame lies in the system's buffer

    control.ClearInBuffer();

    EXPECT_EQ(control.InBufferCount(), 0U);
    control.Output(request);
    EXPECT_TRUE(WaitForBytes(frameSize));
    EXPECT_EQ(control.InBufferCount(), frameSize);
}

TEST_F(Win32Serial, A_device_that_has_gone_is_told_once) {
    const Win32Instrument instrument;
    control.SetPortOpen(true);
    int lost = 0;
    control.OnComm = [&](auto event) {
        lost += event == platform::SerialControl::Event::portLost ? 1 : 0;
    };

    instrument.Command("unplug");

    EXPECT_TRUE(WaitFor([&] { return lost > 0; }));
    EXPECT_FALSE(WaitFor([&] { return lost > 1; }, 300ms));
    EXPECT_TRUE(control.DeviceChanged());
    EXPECT_THROW(control.Output(request), RunTimeError);
}

TEST_F(Win32Serial, A_port_that_is_back_is_opened_again) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    instrument.Command("unplug");
    ASSERT_TRUE(WaitFor([&] { return control.DeviceChanged(); }));
    control.SetPortOpen(false);
    instrument.Command("replug");

    EXPECT_EQ(OpeningError(), "");
    control.Output(request);

    EXPECT_TRUE(WaitForBytes(frameSize));
}

TEST_F(Win32Serial, Nothing_is_delivered_after_the_port_was_closed) {
    const Win32Instrument instrument({"--fast"});
    control.SetPortOpen(true);
    control.Output(request);
    ::Sleep(100);
    control.OnArrival = [] { FAIL(); };

    control.SetPortOpen(false);

    EXPECT_FALSE(WaitFor([] { return false; }, 200ms));
    EXPECT_EQ(control.InBufferCount(), 0U);
}

} // namespace
