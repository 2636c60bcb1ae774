#include "LinkTest.h"
#include "PtyPeer.h"

#include <QLineEdit>
#include <QSerialPort>
#include <QThread>

#include <ctime>

using namespace std::chrono_literals;

namespace {

const std::vector<std::uint8_t> frame = FrameOf({123, -456, 30, -40, 500, -600, 7000, -9999});

/// A frame whose first value is n.0.
std::vector<std::uint8_t> FrameNumber(int n) {
    return FrameOf({10 * n, 0, 0, 0, 0, 0, 0, 0});
}

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The program's link, and the other end of its line in the test's hand.
class PtyLink : public LinkTest {
protected:
    void SetUp() override {
        LinkPort(1, peer.Device());
        StartProgram();
        ASSERT_TRUE(CommPort::PortOK()) << CommPort::StatusText();
    }

    bool RequestArrives() {
        return WaitFor([this] { return !peer.Received().empty(); });
    }

    static std::string Status() { return CommPort::StatusText(); }

    PtyPeer peer;
};

TEST_F(PtyLink, A_request_is_the_one_byte_STX) {
    CommPort::TransferOnce();

    Bytes received;
    ASSERT_TRUE(WaitFor([&] { return !(received = peer.Received()).empty(); }));
    EXPECT_EQ(received, Bytes{0x02});
}

TEST_F(PtyLink, A_frame_over_the_line_fills_the_readings_and_tells_so_in_txtStatus) {
    peer.OnRequest([this] { peer.Send(frame); });

    EXPECT_TRUE(Transfer());

    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
    EXPECT_EQ(CommPort::Readings()[7], -999.9F);
    EXPECT_EQ(The<QLineEdit>("txtStatus").text(), QString("Data transfer completed: ") + moment);
}

TEST_F(PtyLink, A_frame_byte_by_byte_is_one_frame) {
    CommPort::TransferOnce();
    ASSERT_TRUE(RequestArrives());
    for (const auto byte : frame) {
        peer.Send(Bytes{byte});
        QTest::qWait(1);
    }

    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(PtyLink, Noise_that_lay_on_the_line_does_not_spoil_the_answer) {
    peer.OnRequest([this] { peer.Send(frame); });
    peer.Send(Bytes{0x00, 0xFF, 0x04, '+', '1'}); // still in the system's hands at the request

    EXPECT_TRUE(Transfer());
    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
}

TEST_F(PtyLink, More_than_48_bytes_do_not_spoil_this_answer_nor_the_next) {
    int n = 0;
    peer.OnRequest([&] { peer.Send(Glued({FrameNumber(++n), {'+', '0', '1'}})); });

    EXPECT_TRUE(Transfer());
    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
    EXPECT_TRUE(Transfer());
    EXPECT_EQ(CommPort::Readings()[0], 2.0F);
}

TEST_F(PtyLink, No_answer_of_many_is_lost_when_each_comes_at_once) {
    int n = 0;
    peer.OnRequest([&] { peer.Send(FrameNumber(n)); });
    for (n = 0; n < 999; ++n) {
        ASSERT_TRUE(Transfer()) << "answer " << n;
        ASSERT_EQ(CommPort::Readings()[0], static_cast<float>(n));
    }
}

TEST_F(PtyLink, Silence_ends_after_3_seconds_and_costs_no_processor_time) {
    const auto begin = std::chrono::steady_clock::now();
    const auto processorBegin = ProcessorSeconds();
    CommPort::TransferOnce();
    QEventLoop loop;
    const auto observer = CommPort::ObserveLink([&] {
        if (CommPort::State() == LinkState::failed)
            loop.quit();
    });
    loop.exec();

    const auto waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, 2900ms);
    EXPECT_LT(waited, 4s);
    // A wait that spins would cost all of the 3 s.
    EXPECT_LT(ProcessorSeconds() - processorBegin, 0.1);
    EXPECT_EQ(Status(), std::string("System not responding: ") + moment);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(PtyLink, Half_a_frame_is_a_time_out_error_and_the_next_request_is_clean) {
    CommPort::TransferOnce();
    peer.Send(Bytes(frame.begin(), frame.begin() + 24));
    ShortenTimeout();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(Status(), std::string("Data transmission Timeout Error: ") + moment);
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    peer.Send(Bytes(frame.begin() + 24, frame.end() - 1));
    peer.Received();

    peer.OnRequest([this] { peer.Send(frame); });
    EXPECT_TRUE(Transfer());
    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
}

TEST_F(PtyLink, A_frame_that_the_system_holds_when_the_time_is_over_counts) {
    CommPort::TransferOnce();
    ShortenTimeout(20ms);
    peer.Send(frame);
    QThread::msleep(40); // the event loop finds both at once

    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(CommPort::State(), LinkState::answered);
    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
}

TEST_F(PtyLink, Reading_polls_once_a_second_and_the_first_request_goes_out_at_once) {
    std::vector<std::chrono::steady_clock::time_point> requests;
    peer.OnRequest([&] {
        requests.push_back(std::chrono::steady_clock::now());
        peer.Send(frame);
    });
    const auto begin = std::chrono::steady_clock::now();

    CommPort::BeginReading();

    ASSERT_TRUE(WaitFor([&] { return requests.size() == 3; }));
    CommPort::EndReading();
    EXPECT_LT(requests[0] - begin, 500ms);
    EXPECT_GT(requests[2] - requests[0], 1900ms);
    EXPECT_LT(requests[2] - requests[0], 3s);
}

TEST_F(PtyLink, Frames_that_the_instrument_sends_by_itself_are_decoded_while_a_screen_reads) {
    peer.OnRequest([this] { peer.Send(FrameNumber(1)); });
    CommPort::BeginReading();
    ASSERT_TRUE(WaitForEnd());

    peer.Send(Glued({FrameNumber(2), FrameNumber(3)}));

    EXPECT_TRUE(WaitFor([] { return CommPort::Readings()[0] == 3.0F; }));
}

TEST_F(PtyLink, A_program_that_was_held_up_while_the_instrument_sent_reads_on) {
    peer.OnRequest([this] { peer.Send(FrameNumber(1)); });
    CommPort::BeginReading();
    ASSERT_TRUE(WaitForEnd());

    Bytes held; // more than the input holds
    for (int n = 2; n <= 9; ++n) {
        const auto next = FrameNumber(n);
        held.insert(held.end(), next.begin(), next.end());
    }
    peer.Send(held);
    QThread::msleep(100); // no event runs: a disk stands still
    EXPECT_TRUE(WaitFor([] { return CommPort::Readings()[0] == 6.0F; }));
    peer.Send(FrameNumber(10));

    EXPECT_TRUE(WaitFor([] { return CommPort::Readings()[0] == 10.0F; }));
    EXPECT_EQ(CommPort::State(), LinkState::answered);
}

TEST_F(PtyLink, While_the_message_is_open_bytes_go_on_arriving_and_no_request_goes_out) {
    int requests = 0;
    peer.OnRequest([&] {
        ++requests;
        peer.Send(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
    });
    ExpectBadFrameMessage();
    platform.dialogs.whileMessageIsOpen = [&] {
        peer.Send(frame);
        QTest::qWait(1300); // more than a transfer interval
        EXPECT_EQ(requests, 1);
        EXPECT_EQ(CommPort::State(), LinkState::waiting);
    };
    CommPort::BeginReading();

    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    CommPort::EndReading();
    EXPECT_EQ(platform.dialogs.beeps, 1);
    EXPECT_EQ(CommPort::Readings()[0], 0.0F);
}

TEST_F(PtyLink, A_cable_pulled_in_the_middle_of_a_frame_fails_the_link_at_once) {
    CommPort::BeginReading();
    peer.Send(Bytes(frame.begin(), frame.begin() + 20));
    QTest::qWait(20);

    peer.Unplug();

    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }, 1s));
    EXPECT_EQ(Status(), std::string("COM1 was lost: ") + moment);
    EXPECT_FALSE(CommPort::Busy());
    EXPECT_FALSE(CommPort::PortOK());
}

TEST_F(PtyLink, A_device_that_has_gone_costs_no_processor_time) {
    CommPort::BeginReading();
    peer.Unplug();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    const auto begin = ProcessorSeconds();
    QEventLoop loop;
    QTimer::singleShot(1000, &loop, &QEventLoop::quit);
    loop.exec();

    EXPECT_LT(ProcessorSeconds() - begin, 0.1);
}

TEST_F(PtyLink, A_device_that_is_back_is_reopened_by_starting_to_read) {
    CommPort::BeginReading();
    peer.Unplug();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    CommPort::EndReading();

    PtyPeer again; // it may have come back under another name; the link leads to it
    again.OnRequest([&] { again.Send(frame); });
    LinkPort(1, again.Device());
    CommPort::BeginReading();

    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    CommPort::EndReading();
    EXPECT_EQ(CommPort::Readings()[0], 12.3F);
}

TEST_F(PtyLink, A_name_that_fell_back_to_a_silent_device_and_came_back_is_read_by_the_next_start) {
    CommPort::BeginReading();
    peer.Unplug();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    CommPort::EndReading();
    PtyPeer silent;
    LinkPort(1, silent.Device());
    CommPort::BeginReading();
    ShortenTimeout();
    ASSERT_TRUE(WaitFor([] { return CommPort::HasFailed(); }));
    CommPort::EndReading();

    PtyPeer again;
    again.OnRequest([&] { again.Send(frame); });
    LinkPort(1, again.Device());
    CommPort::BeginReading();

    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }, 1s));
    CommPort::EndReading();
}

TEST_F(PtyLink, A_start_after_the_device_was_changed_under_an_open_port_reads_the_new_one) {
    peer.OnRequest([this] { peer.Send(FrameNumber(4)); });
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    CommPort::EndReading();
    PtyPeer other;
    other.OnRequest([&] { other.Send(frame); });
    LinkPort(1, other.Device());

    CommPort::BeginReading();

    EXPECT_TRUE(WaitFor([] { return CommPort::Readings()[0] == 12.3F; }));
    CommPort::EndReading();
}

TEST_F(PtyLink, A_device_that_is_still_away_is_named_when_reading_starts) {
    CommPort::BeginReading();
    peer.Unplug();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    CommPort::EndReading();
    const auto link = platform.places.ConfigurationFolder() / "ports" / "com1";

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_EQ(Status(), "Opening COM1: " + link.string() + " is not connected");
}

TEST_F(PtyLink, What_nobody_takes_does_not_pile_up_beyond_the_buffer) {
    for (int i = 0; i < 50; ++i) {
        peer.Send(frame);
        QTest::qWait(1);
    }

    const auto& control = *form->findChild<QSerialPort*>();
    // All of it goes into the control's own 256 bytes.
    EXPECT_TRUE(QTest::qWaitFor([&control] { return control.bytesAvailable() == 0; }));
    peer.OnRequest([this] { peer.Send(FrameNumber(5)); });
    EXPECT_TRUE(Transfer());
    EXPECT_EQ(CommPort::Readings()[0], 5.0F);
}

} // namespace
