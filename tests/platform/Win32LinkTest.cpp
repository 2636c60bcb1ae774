#include "support/Win32Instrument.h"

#include "link/Link.h"
#include "platform/win32/Win32SerialControl.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

/// A timer of the real time that ticks when it is asked.
class LineTimer : public platform::Timer {
public:
    void SetInterval(std::chrono::milliseconds interval) override { interval_ = interval; }
    std::chrono::milliseconds Interval() const override { return interval_; }
    void SetEnabled(bool enabled) override {
        enabled_ = enabled;
        due_ = Clock::now() + interval_;
    }
    bool Enabled() const override { return enabled_; }

    std::chrono::milliseconds Left() const {
        using std::chrono::duration_cast;
        return enabled_
                   ? std::max(0ms, duration_cast<std::chrono::milliseconds>(due_ - Clock::now()))
                   : 1h;
    }
    void TickWhenDue(const std::function<void()>& tick) {
        if (!enabled_ || Clock::now() < due_)
            return;
        due_ = Clock::now() + interval_;
        tick();
    }

private:
    bool enabled_ = false;
    std::chrono::milliseconds interval_{0};
    Clock::time_point due_;
};

/// The program's link over the system's own serial port, to the simulated instrument.
class Win32Link : public testing::Test {
protected:
    using LinkState = CommPort::LinkState;

    void SetUp() override {
        if (!Win32Instrument::IsThere())
            GTEST_SKIP() << "no port with an instrument at its far end";
    }
    void TearDown() override { link.Detach(); }

    void Start(const std::vector<std::string>& arguments = {"--fast"}) {
        instrument = std::make_unique<Win32Instrument>(arguments);
        CommPort::Controls controls;
        controls.MSComm1 = &control;
        controls.tmrTimeout = &timeout;
        controls.tmrTransferInterval = &interval;
        link.Attach(std::move(controls));
        link.choice = {9600, Win32Instrument::portNumber};
        link.port.OpenWithTimeouts(link.choice);
    }

    /// Runs the events until the condition holds or the time is over.
    bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds time = 5s) {
        const auto end = Clock::now() + time;
        while (!condition()) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
            if (left <= 0ms)
                return false;
            const auto wait = std::min({left, timeout.Left(), interval.Left()});
            if (::WaitForSingleObject(control.Arrival(), static_cast<DWORD>(wait.count())) ==
                WAIT_OBJECT_0)
                control.Deliver();
            timeout.TickWhenDue([&] { link.transfer.tmrTimeout_Timer(); });
            interval.TickWhenDue([&] { link.transfer.tmrTransferInterval_Timer(); });
        }
        return true;
    }

    bool Transfer() {
        link.transfer.TransferOnce();
        return WaitFor([&] { return !link.transfer.Busy(); }) &&
               link.transfer.Outcome() == LinkState::answered;
    }

    /// The first temperature sensor at 25 degrees by the default table.
    bool HasReadings() const { return link.transfer.Readings[1] == 745.8F; }

    void ExpectBadFrameMessage() {
        platform.dialogs.ExpectMessage("Data transmission uncompleted: 07.Mar.2003 14:05:33",
                                       platform::style::okOnly + platform::style::exclamation);
    }

    void ExpectFailure(const std::string& status) {
        EXPECT_FALSE(Transfer());
        EXPECT_TRUE(link.status.Text().starts_with(status)) << link.status.Text();
        EXPECT_FALSE(HasReadings());
    }

    void ExpectRecovery() {
        instrument->Command("fault none");
        EXPECT_TRUE(Transfer()) << link.status.Text();
        EXPECT_TRUE(HasReadings());
    }

    fake::Platform platform;
    std::unique_ptr<Win32Instrument> instrument;
    platform::Win32SerialControl control;
    LineTimer timeout;
    LineTimer interval;
    Link link;
};

TEST_F(Win32Link, A_transfer_fills_the_readings) {
    Start();
    EXPECT_TRUE(Transfer()) << link.status.Text();
    EXPECT_TRUE(HasReadings());
}

TEST_F(Win32Link, An_answer_takes_the_time_of_the_line) {
    Start({});
    const auto begin = Clock::now();
    EXPECT_TRUE(Transfer()) << link.status.Text();
    EXPECT_GE(Clock::now() - begin, 45ms) << "480 bits at 9600 bit/s are 50 ms";
}

TEST_F(Win32Link, Silence_is_told_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault silence");
    ExpectFailure("System not responding: ");
    ExpectRecovery();
}

TEST_F(Win32Link, Half_a_frame_is_told_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault half");
    ExpectFailure("Data transmission Timeout Error: ");
    ExpectRecovery();
}

TEST_F(Win32Link, A_bad_last_byte_is_told_in_a_box_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault badend");
    ExpectBadFrameMessage();
    ExpectFailure("Data transmission uncompleted: ");
    ExpectRecovery();
}

TEST_F(Win32Link, Garbage_is_told_in_a_box_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault garbage");
    ExpectBadFrameMessage();
    ExpectFailure("Data transmission uncompleted: ");
    ExpectRecovery();
}

TEST_F(Win32Link, Noise_before_a_frame_spoils_that_frame_alone) {
    Start();
    instrument->Command("fault noise");
    ExpectBadFrameMessage();
    ExpectFailure("Data transmission uncompleted: ");
    ExpectRecovery();
}

TEST_F(Win32Link, Bytes_too_many_spoil_nothing) {
    Start();
    instrument->Command("fault extra");
    for (int i = 0; i < 3; ++i) {
        link.transfer.Readings.fill(0);
        EXPECT_TRUE(Transfer());
        EXPECT_TRUE(HasReadings());
    }
}

TEST_F(Win32Link, A_frame_in_pieces_is_one_frame) {
    Start();
    instrument->Command("fault pieces 0.1");
    EXPECT_TRUE(Transfer());
    EXPECT_TRUE(HasReadings());
}

TEST_F(Win32Link, An_answer_that_comes_late_but_in_time_counts) {
    Start();
    instrument->Command("fault delay 1");
    EXPECT_TRUE(Transfer());
    EXPECT_TRUE(HasReadings());
}

TEST_F(Win32Link, A_cable_pulled_in_the_middle_of_a_frame_and_put_back_is_taken_up_by_a_start) {
    Start();
    instrument->Command("fault unplug");
    link.transfer.BeginReading();
    ASSERT_TRUE(WaitFor([&] { return link.transfer.HasFailed(); }));
    link.transfer.EndReading();
    link.transfer.BeginReading();
    EXPECT_TRUE(link.transfer.HasFailed()) << "nothing is plugged in";
    link.transfer.EndReading();

    instrument->Command("replug");
    link.transfer.BeginReading();

    EXPECT_TRUE(WaitFor([&] { return link.transfer.Outcome() == LinkState::answered; }))
        << link.status.Text();
    EXPECT_TRUE(HasReadings());
    link.transfer.EndReading();
}

TEST_F(Win32Link, A_cable_pulled_between_transfers_fails_the_link_at_once) {
    Start();
    link.transfer.BeginReading();
    ASSERT_TRUE(WaitFor([&] { return link.transfer.Outcome() == LinkState::answered; }));

    instrument->Command("unplug");

    EXPECT_TRUE(WaitFor([&] { return link.transfer.HasFailed(); }, 2s));
    link.transfer.EndReading();
}

TEST_F(Win32Link, Frames_that_the_instrument_sends_by_itself_are_read) {
    Start({"--fast", "--unsolicited", "0.2"});
    link.transfer.BeginReading();
    ASSERT_TRUE(WaitFor([&] { return link.transfer.Outcome() == LinkState::answered; }));
    interval.SetEnabled(false);
    link.transfer.Readings.fill(0);

    EXPECT_TRUE(WaitFor([&] { return HasReadings(); }));
    EXPECT_FALSE(link.transfer.Busy());
    link.transfer.EndReading();
}

/// 500 frames, or as many as the variable VANTREL_SERIAL_FRAMES says.
TEST_F(Win32Link, Frame_after_frame_comes_without_loss) {
    const char* const asked = std::getenv("VANTREL_SERIAL_FRAMES");
    const int frames = asked ? std::atoi(asked) : 500;
    Start();
    for (int i = 0; i < frames; ++i) {
        link.transfer.Readings.fill(0);
        ASSERT_TRUE(Transfer()) << "frame " << i << ": " << link.status.Text();
        ASSERT_TRUE(HasReadings()) << "frame " << i;
    }
    RecordProperty("frames", frames);
}

} // namespace
