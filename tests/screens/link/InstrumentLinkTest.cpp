#include "LinkTest.h"

#include "support/InstrumentProcess.h"

#include <QCoreApplication>

#include <fstream>

using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

/// The program's link against the simulated instrument, a program of its own.
class InstrumentLink : public LinkTest {
protected:
    void Start(std::vector<std::string> arguments = {"--fast"}, std::int32_t bitRate = 9600) {
        const auto home = platform.folder.Path() / "home";
        fs::create_directories(home);
        arguments.insert(arguments.begin(), "--ideal");
        instrument = std::make_unique<InstrumentProcess>(home, arguments);
        // The link stays where the instrument keeps it, so that it is followed after a replug.
        LinkPort(1, instrument->Link());
        StartProgram(bitRate);
        ASSERT_TRUE(CommPort::PortOK()) << CommPort::StatusText();
    }

    /// The first temperature sensor at 25 degrees by the default table: 745.8.
    static bool HasReadings() { return CommPort::Readings()[1] == 745.8F; }

    /// A transfer that shall fail, with a short wait.
    void FailingTransfer() {
        CommPort::TransferOnce();
        QTest::qWait(50);
        if (CommPort::Busy())
            ShortenTimeout();
        ASSERT_TRUE(WaitForEnd());
        EXPECT_EQ(CommPort::State(), LinkState::failed);
        EXPECT_FALSE(HasReadings());
    }

    void ExpectRecovery() {
        instrument->Command("fault none");
        EXPECT_TRUE(Transfer()) << CommPort::StatusText();
        EXPECT_TRUE(HasReadings());
    }

    std::unique_ptr<InstrumentProcess> instrument;
};

TEST_F(InstrumentLink, Answers_at_every_bit_rate_in_the_time_that_the_line_takes) {
    for (const std::int32_t bitRate : {300, 1200, 2400, 4800, 9600, 19200, 57600, 115200}) {
        CommPort::Readings().fill(0);
        form.reset();
        Start({}, bitRate);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(Transfer()) << bitRate << ": " << CommPort::StatusText();
        const auto took = std::chrono::steady_clock::now() - begin;

        EXPECT_TRUE(HasReadings()) << bitRate;
        // 48 bytes of 10 bits; what a busy machine adds does not matter.
        EXPECT_GE(took, std::chrono::milliseconds(48 * 10 * 1000 / bitRate) * 9 / 10) << bitRate;
        instrument.reset();
    }
}

TEST_F(InstrumentLink, Polling_shows_a_change_of_solution) {
    Start({"--fast", "--electrode", "1", "Ca", "--solution", "1", "Ca", "1", "mmol/l"});
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    const auto before = CommPort::Readings()[0];

    instrument->Command("solution 1 Ca 10 mmol/l");

    // 29.6 mV a decade at 25 degrees for a divalent ion.
    EXPECT_TRUE(WaitFor([&] { return std::abs(CommPort::Readings()[0] - before - 29.6F) < 0.15F; }))
        << before << " " << CommPort::Readings()[0];
    CommPort::EndReading();
}

TEST_F(InstrumentLink, Silence_is_told_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault silence");

    FailingTransfer();

    EXPECT_EQ(CommPort::StatusText(), std::string("System not responding: ") + moment);
    ExpectRecovery();
}

TEST_F(InstrumentLink, Half_a_frame_is_told_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault half");

    FailingTransfer();

    EXPECT_EQ(CommPort::StatusText(), std::string("Data transmission Timeout Error: ") + moment);
    ExpectRecovery();
}

TEST_F(InstrumentLink, A_bad_last_byte_is_told_in_a_box_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault badend");
    ExpectBadFrameMessage();

    FailingTransfer();

    EXPECT_EQ(CommPort::StatusText(), std::string("Data transmission uncompleted: ") + moment);
    ExpectRecovery();
}

TEST_F(InstrumentLink, Garbage_is_told_in_a_box_and_the_next_request_is_answered) {
    Start();
    instrument->Command("fault garbage");
    ExpectBadFrameMessage();

    FailingTransfer();

    ExpectRecovery();
}

TEST_F(InstrumentLink, Noise_before_a_frame_spoils_that_frame_alone) {
    Start();
    instrument->Command("fault noise");
    ExpectBadFrameMessage();

    FailingTransfer();

    ExpectRecovery();
}

TEST_F(InstrumentLink, Bytes_too_many_spoil_nothing) {
    Start();
    instrument->Command("fault extra");
    for (int i = 0; i < 3; ++i) {
        CommPort::Readings().fill(0);
        EXPECT_TRUE(Transfer());
        EXPECT_TRUE(HasReadings());
    }
}

TEST_F(InstrumentLink, A_frame_in_pieces_is_one_frame) {
    Start();
    instrument->Command("fault pieces 0.1");

    EXPECT_TRUE(Transfer());
    EXPECT_TRUE(HasReadings());
}

TEST_F(InstrumentLink, An_answer_that_comes_late_but_in_time_counts) {
    Start();
    instrument->Command("fault delay 1");

    EXPECT_TRUE(Transfer());
    EXPECT_TRUE(HasReadings());
}

TEST_F(InstrumentLink, An_answer_that_comes_too_late_fails_the_link_and_spoils_no_later_one) {
    Start();
    instrument->Command("fault delay 0.5 times 1");
    CommPort::TransferOnce();
    ShortenTimeout(200ms);
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    QTest::qWait(600); // the late frame lies in the buffer now

    EXPECT_TRUE(Transfer());
    EXPECT_TRUE(HasReadings());
}

TEST_F(InstrumentLink, A_cable_pulled_in_the_middle_of_a_frame_and_put_back_is_taken_up_by_Start) {
    Start();
    instrument->Command("fault unplug");
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    EXPECT_FALSE(CommPort::PortOK());
    CommPort::EndReading();

    CommPort::BeginReading();
    EXPECT_EQ(CommPort::State(), LinkState::failed) << "nothing is plugged in";
    CommPort::EndReading();

    instrument->WriteInput("replug");
    instrument->ReadLine();
    CommPort::BeginReading();
    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }))
        << CommPort::StatusText();
    EXPECT_TRUE(HasReadings());
    CommPort::EndReading();
}

TEST_F(InstrumentLink, A_cable_pulled_between_transfers_fails_the_link_at_once) {
    Start();
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));

    instrument->Command("unplug");

    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }, 2s));
    CommPort::EndReading();
}

TEST_F(InstrumentLink, Frames_that_it_sends_by_itself_are_read_besides_the_polled_ones) {
    Start({"--fast", "--unsolicited", "0.2"});
    The<QTimer>("tmrTransferInterval").stop();
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    The<QTimer>("tmrTransferInterval").stop();

    CommPort::Readings().fill(0);

    EXPECT_TRUE(WaitFor([] { return HasReadings(); }));
    EXPECT_FALSE(CommPort::Busy());
    CommPort::EndReading();
}

TEST_F(InstrumentLink, An_instrument_that_dies_fails_the_link) {
    Start();
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));

    instrument->Stop(SIGKILL);

    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::failed; }));
    CommPort::EndReading();
}

/// Pages of memory that this process has in use.
long ResidentPages() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident;
}

TEST_F(InstrumentLink, A_hundred_thousand_frames_come_without_loss_or_growth_of_memory) {
    Start();
    constexpr int frames = 100000;
    constexpr int settled = 10000;
    constexpr long grownPages = 128; // half a megabyte, below one byte in ten of the frames
    long pagesWhenSettled = 0;
    for (int i = 0; i < frames; ++i) {
        CommPort::Readings()[1] = 0;
        CommPort::TransferOnce();
        while (CommPort::Busy())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        ASSERT_EQ(CommPort::State(), LinkState::answered) << "frame " << i;
        ASSERT_TRUE(HasReadings()) << "frame " << i;
        if (i == settled)
            pagesWhenSettled = ResidentPages();
    }

    EXPECT_GT(pagesWhenSettled, 0);
    EXPECT_LT(ResidentPages() - pagesWhenSettled, grownPages);
}

} // namespace
